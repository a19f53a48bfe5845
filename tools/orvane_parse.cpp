// orvane-parse: parses each file argument (or standard input) as one scanned input and
// prints one JSON object per input: the library's own result object, with the input's
// name first.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "json_text.h"
#include "orvane_parser.h"
#if ORVANE_WITH_ZXING
#include "image_reader.h"
#endif

namespace {

using orvane_tools::appendJsonString;

struct Symbol {
    bool given = false;
    int columns = 0;
    int rows = 0;
    int level = 0;
};

struct Options {
    std::vector<const char*> files;
    Symbol symbol;
    bool strict = false;
    bool image = false;
};

void printUsage(FILE* out) {
    std::fputs(
        "usage: orvane-parse [--strict] [--symbol COLUMNS,ROWS,LEVEL] [--image] [FILE...]\n"
        "\n"
        "Parses each FILE (standard input when none is given, or for \"-\") as one scanned\n"
        "input, byte for byte: the text of a PDF417 barcode, a magnetic stripe or a\n"
        "machine-readable zone. Prints one JSON object per input on standard output: the\n"
        "input's name, the parse status, the format that read it (formatGroup, formatId,\n"
        "formatName), every field the library answers (under the names of the Java result\n"
        "object; dates also as ISO 8601), the flags as 0 or 1, the checks as \"valid\",\n"
        "\"invalid\" or \"not checkable\", the field count, the check digits, age and\n"
        "expiry, the repairs made to damaged text, and every raw element.\n"
        "\n"
        "Inputs are parsed leniently: text that scanners and apps damaged is repaired\n"
        "first when that gives the better reading.\n"
        "\n"
        "  --strict        parse exactly as the formats are written, repairing nothing\n"
        "  --symbol C,R,L  also check that a PDF417 symbol of C data columns, R rows and\n"
        "                  error-correction level L is one the jurisdiction prints\n"
        "  --image         each FILE is a photo (PNG or JPEG): every PDF417 and Code 39\n"
        "                  barcode in it is read and parsed, one line per barcode with its\n"
        "                  symbology under \"barcode\" (null when the photo shows none)\n"
        "  --version       print the library's version\n"
        "  -h, --help      show this help\n"
        "\n"
        "Exit status: 0 when every input was recognised (a photo when one of its barcodes\n"
        "was), 1 when one was not, 2 for a file that could not be read or a bad option.\n",
        out);
}

bool parseSymbol(const char* text, Symbol* symbol) {
    char extra = 0;
    if (std::sscanf(text, "%d,%d,%d%c", &symbol->columns, &symbol->rows, &symbol->level, &extra) != 3) return false;
    symbol->given = true;
    return true;
}

// 0 with the options read, 1 when help was printed, 2 for a bad command line.
int readOptions(int argc, char** argv, Options* options) {
    for (int i = 1; i < argc; ++i) {
        const char* arg = argv[i];
        if (std::strcmp(arg, "-h") == 0 || std::strcmp(arg, "--help") == 0) {
            printUsage(stdout);
            return 1;
        }
        if (std::strcmp(arg, "--version") == 0) {
            char version[32];
            SVT_getVersionText(version, sizeof version);
            std::printf("orvane-parse %s\n", version);
            return 1;
        }
        if (std::strcmp(arg, "--strict") == 0) {
            options->strict = true;
            continue;
        }
        if (std::strcmp(arg, "--image") == 0) {
#if ORVANE_WITH_ZXING
            options->image = true;
            continue;
#else
            std::fprintf(stderr, "orvane-parse: --image needs a build with zxing-cpp (ORVANE_WITH_ZXING; Debian: libzxing-dev)\n");
            return 2;
#endif
        }
        if (std::strcmp(arg, "--symbol") == 0) {
            if (i + 1 >= argc || !parseSymbol(argv[++i], &options->symbol)) {
                std::fprintf(stderr, "orvane-parse: --symbol needs COLUMNS,ROWS,LEVEL (for example 20,15,5)\n");
                return 2;
            }
            continue;
        }
        if (arg[0] == '-' && arg[1] != '\0') {
            std::fprintf(stderr, "orvane-parse: unknown option %s (try --help)\n", arg);
            return 2;
        }
        options->files.push_back(arg);
    }
    if (options->files.empty()) options->files.push_back("-");
    return 0;
}

bool readAll(FILE* in, std::vector<unsigned char>* bytes) {
    unsigned char chunk[65536];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0) bytes->insert(bytes->end(), chunk, chunk + n);
    return std::ferror(in) == 0;
}

const char* checkVerdict(int status) {
    switch (status) {
        case SVT_CHECK_VALID:
            return "valid";
        case SVT_CHECK_INVALID:
            return "invalid";
        default:
            return "not checkable";
    }
}

// The library's result object, grown until it fits.
std::string resultJson(SVT_ParserHandle* handle) {
    std::vector<char> buffer(16384);
    int length = 0;
    while (SVT_getResultJson(handle, buffer.data(), static_cast<int>(buffer.size()), &length) == SVT_ERR_NO_ANSWER &&
           static_cast<size_t>(length) >= buffer.size()) {
        buffer.resize(static_cast<size_t>(length) + 1);
    }
    return std::string(buffer.data(), static_cast<size_t>(length));
}

// The symbol check needs the symbol's size, which only the caller knows.
void appendSymbolCheck(SVT_ParserHandle* handle, const Symbol& symbol, std::string* json) {
    int status = 0;
    const int result = SVT_validateBarcode(handle, symbol.columns, symbol.rows, symbol.level, &status);
    json->append(",\"barcodeValidationStatus\":");
    appendJsonString(json, result == SVT_OK ? checkVerdict(status) : "symbol out of range");
}

// Parses the bytes and prints the line: the input's name, the members in between, the result.
int parseBytes(SVT_ParserHandle* handle, const char* source, const char* members, const std::vector<unsigned char>& bytes,
               const Options& options) {
    int status = SVT_ERR_EMPTY_INPUT;
    if (!bytes.empty()) {
        const int length = static_cast<int>(bytes.size());
        status = options.strict ? SVT_parse(handle, bytes.data(), length) : SVT_parseLenient(handle, bytes.data(), length);
    }
    std::string json = "{\"input\":";
    appendJsonString(&json, source);
    json += members;
    if (bytes.empty()) {
        json += ",\"status\":" + std::to_string(status) + "}";
    } else {
        const std::string result = resultJson(handle);
        json += "," + result.substr(1, result.size() - 2);
        if (status == SVT_OK && options.symbol.given) appendSymbolCheck(handle, options.symbol, &json);
        json += "}";
    }
    std::printf("%s\n", json.c_str());
    return status;
}

#if ORVANE_WITH_ZXING
int parseImage(SVT_ParserHandle* handle, const char* source, const std::vector<unsigned char>& file,
               const Options& options) {
    std::vector<orvane_tools::Barcode> barcodes;
    std::string why;
    if (!orvane_tools::readBarcodes(file, &barcodes, &why)) {
        std::fprintf(stderr, "orvane-parse: cannot read the image %s: %s\n", source, why.c_str());
        return 2;
    }
    if (barcodes.empty()) {
        parseBytes(handle, source, ",\"barcode\":null", {}, options);
        std::fprintf(stderr, "orvane-parse: %s: no PDF417 or Code 39 barcode found\n", source);
        return 1;
    }
    bool recognised = false;
    for (const orvane_tools::Barcode& barcode : barcodes) {
        const std::string members = std::string(",\"barcode\":\"") + barcode.symbology + "\"";
        if (parseBytes(handle, source, members.c_str(), barcode.bytes, options) == SVT_OK) recognised = true;
    }
    if (!recognised) {
        std::fprintf(stderr, "orvane-parse: %s: no known format recognised its barcodes\n", source);
        return 1;
    }
    return 0;
}
#endif

int parseOne(SVT_ParserHandle* handle, const char* source, FILE* in, const Options& options) {
    std::vector<unsigned char> bytes;
    if (!readAll(in, &bytes)) {
        std::fprintf(stderr, "orvane-parse: cannot read %s: %s\n", source, std::strerror(errno));
        return 2;
    }
#if ORVANE_WITH_ZXING
    if (options.image) return parseImage(handle, source, bytes, options);
#endif
    const int status = parseBytes(handle, source, "", bytes, options);
    if (status != SVT_OK) {
        std::fprintf(stderr, "orvane-parse: %s: %s (status %d)\n", source,
                     bytes.empty() ? "empty input" : "no known format recognised the input", status);
        return 1;
    }
    return 0;
}

int parseFile(SVT_ParserHandle* handle, const char* file, const Options& options) {
    if (std::strcmp(file, "-") == 0) return parseOne(handle, "<stdin>", stdin, options);
    FILE* in = std::fopen(file, "rb");
    if (in == nullptr) {
        std::fprintf(stderr, "orvane-parse: cannot open %s: %s\n", file, std::strerror(errno));
        return 2;
    }
    const int result = parseOne(handle, file, in, options);
    std::fclose(in);
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (int result = readOptions(argc, argv, &options)) return result == 1 ? 0 : result;
    SVT_ParserHandle* handle = SVT_create();
    if (handle == nullptr) {
        std::fprintf(stderr, "orvane-parse: out of memory\n");
        return 2;
    }
    int worst = 0;
    for (const char* file : options.files) {
        const int result = parseFile(handle, file, options);
        if (result > worst) worst = result;
    }
    SVT_delete(handle);
    return worst;
}
