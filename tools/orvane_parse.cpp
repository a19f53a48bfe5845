// orvane-parse: parses each file argument (or standard input) as one scanned input and
// prints one JSON object per input with the parse status, every answer that exists, the
// flags and the check results.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "answer_table.h"
#include "api/handle.h"
#include "documents/mrz_check_digits.h"
#include "engine/registry.h"
#include "json_text.h"
#include "orvane_parser.h"

namespace {

using orvane_tools::kFlagAnswers;
using orvane_tools::appendJsonString;
using orvane_tools::kTextAnswers;

struct Symbol {
    bool given = false;
    int columns = 0;
    int rows = 0;
    int level = 0;
};

struct Options {
    std::vector<const char*> files;
    Symbol symbol;
};

void printUsage(FILE* out) {
    std::fputs(
        "usage: orvane-parse [--symbol COLUMNS,ROWS,LEVEL] [FILE...]\n"
        "\n"
        "Parses each FILE (standard input when none is given, or for \"-\") as one scanned\n"
        "input, byte for byte: the text of a PDF417 barcode, a magnetic stripe or a\n"
        "machine-readable zone. Prints one JSON object per input on standard output: the\n"
        "parse status, the format that read it (formatGroup, formatId), every field the\n"
        "library answers (under the names of the Java result object), the flags as 0 or 1,\n"
        "the checks as \"valid\", \"invalid\" or \"not checkable\", and for machine-readable\n"
        "zones whether their check digits hold (mrzCheckDigits, mrzCheckDigitFailure).\n"
        "\n"
        "  --symbol C,R,L  also check that a PDF417 symbol of C data columns, R rows and\n"
        "                  error-correction level L is one the jurisdiction prints\n"
        "  -h, --help      show this help\n"
        "\n"
        "Exit status: 0 when every input was recognised, 1 when one was not, 2 for a file\n"
        "that could not be read or a bad option.\n",
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

void appendMember(std::string* json, const char* name) {
    json->append(",\"");
    json->append(name);
    json->append("\":");
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

void appendCheck(std::string* json, const char* name, int result, int status) {
    if (result != SVT_OK) return;
    appendMember(json, name);
    appendJsonString(json, checkVerdict(status));
}

// The check digits of a machine-readable zone; they do not change any answer.
void appendZoneCheckDigits(const std::vector<unsigned char>& bytes, std::string* json) {
    orvane::MrzCheckReport report{};
    const int verdict = orvane::checkMrzDigits(reinterpret_cast<const char*>(bytes.data()),
                                               static_cast<int>(bytes.size()), &report);
    if (verdict < 0) return;
    appendMember(json, "mrzCheckDigits");
    appendJsonString(json, verdict == 1 ? "valid" : "invalid");
    if (report.firstFailure != nullptr) {
        appendMember(json, "mrzCheckDigitFailure");
        appendJsonString(json, report.firstFailure);
    }
}

void appendAnswers(SVT_ParserHandle* handle, const Symbol& symbol, std::string* json) {
    appendMember(json, "formatGroup");
    json->append(std::to_string(handle->record.formatGroup));
    appendMember(json, "formatId");
    json->append(std::to_string(handle->record.formatId));
    char buffer[4096];
    for (const auto& answer : kTextAnswers) {
        if (answer.getter(handle, buffer, sizeof buffer) != SVT_OK || buffer[0] == '\0') continue;
        appendMember(json, answer.name);
        appendJsonString(json, buffer);
    }
    for (const auto& answer : kFlagAnswers) {
        int value = 0;
        if (answer.getter(handle, &value) != SVT_OK) continue;
        appendMember(json, answer.name);
        json->append(std::to_string(value));
    }
    int status = 0;
    int result = SVT_validateDocumentId(handle, &status);
    appendCheck(json, "documentIdValidationStatus", result, status);
    result = SVT_validateJurisdictionCode(handle, &status);
    appendCheck(json, "jurisdictionCodeValidationStatus", result, status);
    if (symbol.given) {
        result = SVT_validateBarcode(handle, symbol.columns, symbol.rows, symbol.level, &status);
        if (result == SVT_OK) {
            appendCheck(json, "barcodeValidationStatus", result, status);
        } else {
            appendMember(json, "barcodeValidationStatus");
            appendJsonString(json, "symbol out of range");
        }
    }
}

int parseOne(SVT_ParserHandle* handle, const char* source, FILE* in, const Symbol& symbol) {
    std::vector<unsigned char> bytes;
    if (!readAll(in, &bytes)) {
        std::fprintf(stderr, "orvane-parse: cannot read %s: %s\n", source, std::strerror(errno));
        return 2;
    }
    const int status = bytes.empty() ? SVT_ERR_EMPTY_INPUT
                                     : SVT_parse(handle, bytes.data(), static_cast<int>(bytes.size()));
    std::string json = "{\"input\":";
    appendJsonString(&json, source);
    json += ",\"status\":" + std::to_string(status);
    if (status == SVT_OK) {
        appendAnswers(handle, symbol, &json);
        if (handle->record.formatGroup == orvane::kGroupMrz) appendZoneCheckDigits(bytes, &json);
    }
    json += "}";
    std::printf("%s\n", json.c_str());
    if (status != SVT_OK) {
        std::fprintf(stderr, "orvane-parse: %s: %s (status %d)\n", source,
                     bytes.empty() ? "empty input" : "no known format recognised the input", status);
        return 1;
    }
    return 0;
}

int parseFile(SVT_ParserHandle* handle, const char* file, const Symbol& symbol) {
    if (std::strcmp(file, "-") == 0) return parseOne(handle, "<stdin>", stdin, symbol);
    FILE* in = std::fopen(file, "rb");
    if (in == nullptr) {
        std::fprintf(stderr, "orvane-parse: cannot open %s: %s\n", file, std::strerror(errno));
        return 2;
    }
    const int result = parseOne(handle, file, in, symbol);
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
        const int result = parseFile(handle, file, options.symbol);
        if (result > worst) worst = result;
    }
    SVT_delete(handle);
    return worst;
}
