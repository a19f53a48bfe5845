#include "image_reader.h"

#include <ZXing/ReadBarcode.h>
#include <stb/stb_image.h>

#include <algorithm>
#include <climits>
#include <exception>
#include <memory>

namespace orvane_tools {

namespace {

struct StbFree {
    void operator()(unsigned char* pixels) const { stbi_image_free(pixels); }
};

// Debian's stb_image writes past its Huffman tables when a JPEG's table holds more than 256
// codes, so such files are refused before stb sees them: every table of every marker segment.
bool jpegTablesFit(const std::vector<unsigned char>& file) {
    const size_t size = file.size();
    if (size < 2 || file[0] != 0xFF || file[1] != 0xD8) return true;  // not a JPEG
    size_t at = 2;
    while (at + 4 <= size) {
        if (file[at] != 0xFF) {
            ++at;  // entropy-coded data between markers
            continue;
        }
        const unsigned char marker = file[at + 1];
        if (marker == 0xFF || marker == 0x00 || marker == 0x01 || marker == 0xD8 || (marker >= 0xD0 && marker <= 0xD7)) {
            at += marker == 0xFF ? 1 : 2;
            continue;
        }
        if (marker == 0xD9) return true;
        const size_t length = (static_cast<size_t>(file[at + 2]) << 8) | file[at + 3];
        const size_t end = std::min(size, at + 2 + length);
        if (marker == 0xC4) {
            for (size_t table = at + 4; table + 17 <= end;) {
                size_t codes = 0;
                for (size_t i = 1; i <= 16; ++i) codes += file[table + i];
                if (codes > 256) return false;
                table += 17 + codes;
            }
        }
        at = end;
    }
    return true;
}

void readSymbols(const ZXing::ImageView& image, ZXing::Binarizer binarizer, ZXing::BarcodeFormat format,
                 const char* symbology, std::vector<Barcode>* barcodes) {
    ZXing::DecodeHints hints;
    hints.setFormats(format).setBinarizer(binarizer).setTryHarder(true).setTryRotate(true);
    // zxing-cpp 1.4 aborts the process when it meets one Code 39 symbol at two scales of the
    // image, so Code 39 is read at the image's own scale only.
    hints.setTryDownscale(format == ZXing::BarcodeFormat::PDF417);
    for (const ZXing::Result& result : ZXing::ReadBarcodes(image, hints)) {
        if (!result.isValid() || result.bytes().empty()) continue;
        Barcode barcode{symbology, {result.bytes().begin(), result.bytes().end()}};
        const bool seen = std::any_of(barcodes->begin(), barcodes->end(), [&](const Barcode& other) {
            return other.symbology == barcode.symbology && other.bytes == barcode.bytes;
        });
        if (!seen) barcodes->push_back(std::move(barcode));
    }
}

}  // namespace

bool readBarcodes(const std::vector<unsigned char>& file, std::vector<Barcode>* barcodes, std::string* why) {
    if (file.size() > static_cast<size_t>(INT_MAX)) {
        *why = "the file is too large";
        return false;
    }
    const int length = static_cast<int>(file.size());
    int width = 0, height = 0, channels = 0;
    if (!jpegTablesFit(file)) {
        *why = "the JPEG image is damaged (a Huffman table holds more than 256 codes)";
        return false;
    }
    if (!stbi_info_from_memory(file.data(), length, &width, &height, &channels)) {
        *why = "not a PNG or JPEG image";
        return false;
    }
    if (static_cast<long long>(width) * height > kMaxImagePixels) {
        *why = "the image is too large: " + std::to_string(width) + "x" + std::to_string(height) +
               " pixels, at most " + std::to_string(kMaxImagePixels) + " in all";
        return false;
    }
    std::unique_ptr<unsigned char, StbFree> pixels(stbi_load_from_memory(file.data(), length, &width, &height, &channels, 1));
    if (!pixels) {
        *why = std::string("the image cannot be decoded: ") + stbi_failure_reason();
        return false;
    }
    try {
        const ZXing::ImageView image(pixels.get(), width, height, ZXing::ImageFormat::Lum);
        // The local binarizer reads most photos; a fixed threshold reads the dim, blurred and
        // tilted ones it misses, so the others are tried only when it finds nothing.
        for (ZXing::Binarizer binarizer : {ZXing::Binarizer::LocalAverage, ZXing::Binarizer::FixedThreshold,
                                           ZXing::Binarizer::GlobalHistogram}) {
            readSymbols(image, binarizer, ZXing::BarcodeFormat::PDF417, "PDF417", barcodes);
            readSymbols(image, binarizer, ZXing::BarcodeFormat::Code39, "Code39", barcodes);
            if (!barcodes->empty()) break;
        }
    } catch (const std::exception& error) {
        *why = std::string("the barcode reader failed: ") + error.what();
        return false;
    }
    return true;
}

}  // namespace orvane_tools
