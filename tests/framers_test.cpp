#include "engine/framers.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

std::string frame(int32_t (*framer)(const char*, int32_t, char*, int32_t, int32_t*), const std::string& input,
                  int32_t capacity = 512, int32_t* status = nullptr) {
    std::string out(static_cast<size_t>(capacity), '#');
    int32_t length = -1;
    const int32_t s = framer(input.data(), static_cast<int32_t>(input.size()), out.data(), capacity, &length);
    if (status != nullptr) *status = s;
    if (s != kOk) return "<error>";
    return out.substr(0, static_cast<size_t>(length));
}

std::string barcode(const std::string& input, int32_t capacity = 512) {
    return frame(frameBarcodeText, input, capacity);
}

std::string replaceEvery(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

const std::string kHeader = "@\n\x1e\rANSI 636026080102DL00410276ZA03170007";
const std::string kBody = "DLDAQD08954796\nDCSSAMPLE\nDACJORDAN";

TEST(FrameBarcodeText, EveryDeliveredShapeOfAHeaderFramesAlike) {
    const std::string raw = kHeader + kBody;
    struct Shape {
        const char* name;
        std::string input;
    };
    const Shape shapes[] = {
        {"raw", raw},
        {"every line break as CR LF", "@\r\n\x1e\r\nANSI 636026080102DL00410276ZA03170007" + replaceEvery(kBody, "\n", "\r\n")},
        {"bracket escaped", replaceEvery(replaceEvery(replaceEvery(raw, "\n", "[0A]"), "\r", "[0D]"), "\x1e", "[1E]")},
        {"backslash escaped", replaceEvery(replaceEvery(raw, "\n", "\\n"), "\r", "\\r")},
        {"leading control bytes", "\x02\x03\r\n" + raw},
        {"separators lost", "@\n\nANSI 636026080102DL00410276ZA03170007" + kBody},
        {"blank between line feeds", "@\n \nANSI 636026080102DL00410276ZA03170007" + kBody},
        {"record separator lost", "@\n\rANSI 636026080102DL00410276ZA03170007" + kBody},
        {"doubled carriage returns", "@\r\r\n\r\r\nANSI 636026080102DL00410276ZA03170007" + kBody},
        {"trailing line breaks", raw + "\r\n\r\n  "},
    };
    for (const Shape& shape : shapes) {
        SCOPED_TRACE(shape.name);
        EXPECT_EQ(barcode(shape.input), raw);
    }
}

TEST(FrameBarcodeText, SpelledOutFormsEscapesAndRepairs) {
    const std::pair<std::string, std::string> cases[] = {
        {"[0A]", ""},
        {"A[0D][G1]B", "A\r[G1]B"},
        {"A\x01" "B[0A]C\xC3" "D", "AB\nCD"},  // noise bytes go with the spelled form
        {"A\x01" "B", "A\x01" "B"},             // and stay without it
        {"[0A]x[1e]", "x\x1e"},                  // either case of hex digit
        {"[0a]x[1e]", "[0a]x[1e]"},               // but only the upper-case marks start it
        {"A\\tB", "A\\tB"},
        {"A\\nB\\rC", "A\nB\rC"},
        {"A\\", "A\\"},
        {std::string("A\0B", 3), "AB"},
        {std::string("\0A\\\0nB\0\0", 8), "A\\nB"},     // a NUL between ends the escape
        {std::string("A\\\\nB\0\\r\\", 9), "A\\\nB\r\\"},  // runs move around both
        {"\x80\xFF  X  \r\n", "X"},
        {"X\r\r\nY\r\nZ", "X\nY\nZ"},
        {"%AB?*\x02" "636;=1?", "%AB?;;=1?"},  // the stripe artefact between tracks
        {"%AB?*\x02" "6\n6;", "%AB?*\x02" "6\n6;"},
        {"@\x1e*>-\x1eX", "@*\x1e-X"},          // header repairs after the at sign
        {"@\x1e*X", "@*X"},
    };
    for (const auto& [input, framed] : cases) EXPECT_EQ(barcode(input), framed) << input;
}

TEST(FrameBarcodeText, StaysWithinTheCapacity) {
    EXPECT_EQ(barcode("ABCDEFGH", 5), "ABCD");
    // A growing replacement stops where the text would no longer fit.
    EXPECT_EQ(barcode("X@\n\nY", 6), "X@\n\nY");
    EXPECT_EQ(barcode("X@\n\nY", 7), "X@\n\x1e\rY");
    char out[1] = {'#'};
    int32_t length = -1;
    EXPECT_EQ(frameBarcodeText("AB", 2, out, 1, &length), kOk);
    EXPECT_EQ(out[0], '\0');
    EXPECT_EQ(length, 0);
    EXPECT_EQ(frameBarcodeText(nullptr, 2, out, 1, &length), kOk);
}

TEST(FrameBarcodeTextStrict, ReplacesBytesAboveLowerZ) {
    EXPECT_EQ(frame(frameBarcodeTextStrict, "a{b|c}d~e\x1e\n\rf\x7F"), "a b c d e\x1e\n\rf ");
    EXPECT_EQ(frame(frameBarcodeTextStrict, "[0A]"), "");
}

TEST(FramePassThrough, CopiesTheFirstBytes) {
    const std::string input(100, 'q');
    EXPECT_EQ(frame(framePassThrough, input, 50), std::string(50, 'q'));
    EXPECT_EQ(frame(framePassThrough, "aB\x01", 10), "aB\x01");
    int32_t status = 0;
    frame(framePassThrough, "", 10, &status);
    EXPECT_EQ(status, kErrInvalidArgument);
    char out[4];
    EXPECT_EQ(framePassThrough("ab", 2, out, 4, nullptr), kOk);  // the length is optional
    EXPECT_EQ(framePassThrough("ab", 2, nullptr, 4, nullptr), kErrInvalidArgument);
    EXPECT_EQ(framePassThrough("ab", 2, out, 0, nullptr), kErrInvalidArgument);
}

TEST(FrameLatin1, FoldsAccentsAndKeepsTheOddFolds) {
    EXPECT_EQ(frame(frameLatin1, "Jos\xE9 Pe\xF1" "a \xC1" "LVAREZ"), "Jose Pena ALVAREZ");
    EXPECT_EQ(frame(frameLatin1, "\xD8\xDE\xDF\xF8\xFE"), "QPbqp");
    EXPECT_EQ(frame(frameLatin1, "\xA2\xA9\xB0\xBC"), "\xA2\xA9\xB0\xBC");  // unmapped stay
    EXPECT_EQ(frame(frameLatin1, "\xA0\xA6\xAB\xBB\xBF\xD7\xF7"), " |<>?x/");
    EXPECT_EQ(foldLatin1(0x41), 0x41);
    EXPECT_EQ(foldLatin1(0xFF), 'y');
}

TEST(FrameMrz, KeepsZoneCharacters) {
    EXPECT_EQ(frame(frameMrz, "P<utoEriksson<<Anna\nL5ZE6\r 1!"), "P<UTOERIKSSON<<ANNAL5ZE61");
    int32_t status = 0;
    frame(frameMrz, "ABC", 1, &status);
    EXPECT_EQ(status, kErrInvalidArgument);
    EXPECT_EQ(frame(frameMrz, "ABCDEF", 4), "ABC");
    char out[8];
    EXPECT_EQ(frameMrz("AB", 2, out, 8, nullptr), kErrInvalidArgument);
}

}  // namespace
}  // namespace orvane
