#include "stripe/split_helpers.h"

#include "fields/text.h"

namespace orvane {

TextSpan spanBetween(TextSpan text, int32_t begin, int32_t end) {
    if (text.data == nullptr || begin < 0 || begin > text.length) return TextSpan{text.data, 0};
    if (end > text.length) end = text.length;
    return TextSpan{text.data + begin, end > begin ? end - begin : 0};
}

int32_t pickLines(TextSpan text, TextSpan* lines, int32_t max) {
    int32_t found = 0;
    TextSpan rest = text;
    TextSpan line;
    while (found < max && nextToken(rest, &line, &rest, "\r\n", kSkipEmptyTokens)) {
        if (line.length >= 2) lines[found++] = line;
    }
    return found;
}

int32_t pickEndSentinelPieces(TextSpan text, TextSpan* pieces, int32_t max) {
    if (text.data == nullptr) return 0;
    int32_t found = 0;
    int32_t start = 0;
    while (found < max && start < text.length) {
        const int32_t mark = findText(text, "?", start);
        const int32_t end = mark < 0 ? text.length : mark + 1;
        TextSpan piece = spanBetween(text, start, end);
        trimSet(&piece, "\r\n ");
        if (piece.length > 0) pieces[found++] = piece;
        start = end;
    }
    return found;
}

}  // namespace orvane
