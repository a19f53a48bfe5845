// The barcodes in a photo, for orvane-parse --image: PNG and JPEG loaded with stb_image,
// PDF417 and Code 39 symbols read with zxing-cpp. Built only with ORVANE_WITH_ZXING.
#pragma once

#include <string>
#include <vector>

namespace orvane_tools {

struct Barcode {
    const char* symbology;  // "PDF417" or "Code39"
    std::vector<unsigned char> bytes;
};

// The largest image read, in pixels, as the Python package's parse_image.
constexpr long long kMaxImagePixels = 100000000;

// Reads every PDF417 and Code 39 symbol in the encoded image, PDF417 first, each once.
// False with the reason when the bytes are no PNG or JPEG that can be decoded, or too large.
bool readBarcodes(const std::vector<unsigned char>& file, std::vector<Barcode>* barcodes, std::string* why);

}  // namespace orvane_tools
