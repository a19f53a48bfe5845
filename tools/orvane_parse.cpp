// orvane-parse: parses each file argument (or standard input) as one scanned input and
// prints one JSON object per input with the parse status and every answer that exists.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "answer_table.h"
#include "orvane_parser.h"

namespace {

using orvane_tools::kFlagAnswers;
using orvane_tools::kTextAnswers;

void printUsage(FILE* out) {
    std::fputs(
        "usage: orvane-parse [FILE...]\n"
        "Parses each FILE (or standard input when none is given) as one scanned input,\n"
        "byte for byte, and prints one JSON object per input on standard output.\n"
        "  -h, --help   show this help\n"
        "Exit status: 0 when every input was recognised, 1 when one was not, 2 when a\n"
        "file could not be read.\n",
        out);
}

bool readAll(FILE* in, std::vector<unsigned char>* bytes) {
    unsigned char chunk[65536];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0) bytes->insert(bytes->end(), chunk, chunk + n);
    return std::ferror(in) == 0;
}

void appendJsonString(std::string* out, const char* text) {
    static const char kHex[] = "0123456789abcdef";
    out->push_back('"');
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p != 0; ++p) {
        const unsigned char c = *p;
        if (c == '"' || c == '\\') {
            out->push_back('\\');
            out->push_back(static_cast<char>(c));
        } else if (c == '\n') {
            out->append("\\n");
        } else if (c == '\r') {
            out->append("\\r");
        } else if (c == '\t') {
            out->append("\\t");
        } else if (c < 0x20 || c >= 0x7F) {
            // Answers are bytes, not UTF-8: every other byte is written as its code point.
            out->append("\\u00");
            out->push_back(kHex[c >> 4]);
            out->push_back(kHex[c & 15]);
        } else {
            out->push_back(static_cast<char>(c));
        }
    }
    out->push_back('"');
}

std::string describe(SVT_ParserHandle* handle, const char* source, int status) {
    std::string json = "{\"input\":";
    appendJsonString(&json, source);
    json += ",\"status\":" + std::to_string(status);
    if (status == SVT_OK) {
        char buffer[1024];
        for (const auto& answer : kTextAnswers) {
            if (answer.getter(handle, buffer, sizeof buffer) != SVT_OK || buffer[0] == '\0') continue;
            json += ",\"";
            json += answer.name;
            json += "\":";
            appendJsonString(&json, buffer);
        }
        for (const auto& answer : kFlagAnswers) {
            int value = 0;
            if (answer.getter(handle, &value) != SVT_OK) continue;
            json += ",\"";
            json += answer.name;
            json += "\":";
            json += std::to_string(value);
        }
    }
    json += "}";
    return json;
}

int parseOne(SVT_ParserHandle* handle, const char* source, FILE* in) {
    std::vector<unsigned char> bytes;
    if (!readAll(in, &bytes)) {
        std::fprintf(stderr, "orvane-parse: cannot read %s\n", source);
        return 2;
    }
    const int status = bytes.empty() ? SVT_ERR_EMPTY_INPUT
                                     : SVT_parse(handle, bytes.data(), static_cast<int>(bytes.size()));
    std::printf("%s\n", describe(handle, source, status).c_str());
    if (status != SVT_OK) {
        std::fprintf(stderr, "orvane-parse: %s: not recognised (status %d)\n", source, status);
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<const char*> files;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "-h") == 0 || std::strcmp(argv[i], "--help") == 0) {
            printUsage(stdout);
            return 0;
        }
        if (argv[i][0] == '-' && argv[i][1] != '\0') {
            std::fprintf(stderr, "orvane-parse: unknown option %s\n", argv[i]);
            printUsage(stderr);
            return 2;
        }
        files.push_back(argv[i]);
    }
    SVT_ParserHandle* handle = SVT_create();
    if (handle == nullptr) {
        std::fprintf(stderr, "orvane-parse: out of memory\n");
        return 2;
    }
    int worst = 0;
    if (files.empty()) files.push_back("-");
    for (const char* file : files) {
        const bool isStdin = std::strcmp(file, "-") == 0;
        FILE* in = isStdin ? stdin : std::fopen(file, "rb");
        int result;
        if (in == nullptr) {
            std::fprintf(stderr, "orvane-parse: cannot open %s: %s\n", file, std::strerror(errno));
            result = 2;
        } else {
            result = parseOne(handle, isStdin ? "<stdin>" : file, in);
            if (!isStdin) std::fclose(in);
        }
        if (result > worst) worst = result;
    }
    SVT_delete(handle);
    return worst;
}
