#include "aamva/elements.h"

#include <cstring>

#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kDirectoryEntryLength = 10;  // type, four digits of offset, four of length
constexpr int32_t kMostSubfiles = 16;
constexpr int32_t kHeaderSearch = 24;

struct Directory {
    char types[kMostSubfiles][2];
    int32_t count;
};

bool isEntryAt(TextSpan text, int32_t at) {
    return at + kDirectoryEntryLength <= text.length && isAsciiUpper(static_cast<unsigned char>(text.data[at])) &&
           isAsciiAlnum(static_cast<unsigned char>(text.data[at + 1])) && allDigits(text.data + at + 2, 8);
}

// Where the elements start: after "ANSI " or "AAMVA", the digits of issuer, version and
// entry count, and the directory's entries, whose subfile types it notes.
int32_t skipHeader(TextSpan text, Directory* directory) {
    directory->count = 0;
    if (text.length < 1 || text.data[0] != '@') return 0;
    const TextSpan head{text.data, text.length < kHeaderSearch ? text.length : kHeaderSearch};
    int32_t at = spanFind(head, makeSpan("ANSI"));
    if (at >= 0) {
        at += 4;
    } else if ((at = spanFind(head, makeSpan("AAMVA"))) >= 0) {
        at += 5;
    } else {
        return 0;
    }
    while (at < text.length && (isAsciiDigit(static_cast<unsigned char>(text.data[at])) || text.data[at] == ' ')) ++at;
    while (isEntryAt(text, at)) {
        if (directory->count < kMostSubfiles) {
            std::memcpy(directory->types[directory->count++], text.data + at, 2);
        }
        at += kDirectoryEntryLength;
    }
    return at;
}

bool isLicenceType(const char* type) { return (type[0] == 'D' && type[1] == 'L') || (type[0] == 'I' && type[1] == 'D'); }

// A line opens a subfile when it starts with a type of the directory (or "DL" or "ID"
// when there is none) and an element of that subfile follows: licence elements start
// with "D" or "P", a jurisdiction's with its type's first letter ("ZAZAA", not "ZAA12").
bool opensSubfile(TextSpan line, const Directory& directory) {
    if (line.length < 5) return false;
    bool typed = directory.count == 0 && isLicenceType(line.data);
    for (int32_t i = 0; i < directory.count && !typed; ++i) {
        typed = line.data[0] == directory.types[i][0] && line.data[1] == directory.types[i][1];
    }
    if (!typed) return false;
    if (isLicenceType(line.data)) return line.data[2] == 'D' || line.data[2] == 'P';
    return line.data[2] == line.data[0];
}

bool isElementId(const char* id) {
    return isAsciiUpper(static_cast<unsigned char>(id[0])) && isAsciiAlnum(static_cast<unsigned char>(id[1])) &&
           isAsciiAlnum(static_cast<unsigned char>(id[2]));
}

int isElementBlank(int c) { return c == ' ' || c == '\t' || c == '\0'; }

constexpr ByteTable kLineBreaks = byteTableOf("\n\r\x1e");

// The text up to its first line break, and what follows that break.
void cutLine(TextSpan text, TextSpan* line, TextSpan* rest) {
    int32_t end = 0;
    while (end < text.length && !kLineBreaks.has(text.data[end])) ++end;
    *line = TextSpan{text.data, end};
    const int32_t next = end < text.length ? end + 1 : end;
    *rest = TextSpan{text.data + next, text.length - next};
}

}  // namespace

void visitAamvaElements(TextSpan text, ElementVisitor visit, void* context) {
    if (!spanUsable(text) || visit == nullptr) return;
    Directory directory;
    const int32_t start = skipHeader(text, &directory);
    TextSpan rest{text.data + start, text.length - start};
    TextSpan line;
    while (rest.length > 0) {
        cutLine(rest, &line, &rest);
        trimLeadingIf(&line, isElementBlank);
        if (opensSubfile(line, directory)) spanSkip(&line, 2);
        if (line.length < 3 || !isElementId(line.data)) continue;
        TextSpan value{line.data + 3, line.length - 3};
        trimIf(&value, isElementBlank);
        if (!visit(context, TextSpan{line.data, 3}, value)) return;
    }
}

}  // namespace orvane
