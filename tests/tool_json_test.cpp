#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "../tools/json_text.h"

namespace {

TEST(ToolJson, EveryByteGivesValidJson) {
    struct Case {
        const char* text;
        const char* json;
    };
    const Case cases[] = {
        {"JOHN", "\"JOHN\""},
        {"5'10\"", "\"5'10\\\"\""},
        {"A\\B", "\"A\\\\B\""},
        {"A\nB\rC\tD", "\"A\\nB\\rC\\tD\""},
        {"\x01\x1e\x7f", "\"\\u0001\\u001e\\u007f\""},
        {"Jos\xe9", "\"Jos\\u00e9\""},
        {"", "\"\""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::string out;
        orvane_tools::appendJsonString(&out, c.text);
        EXPECT_EQ(out, c.json);
    }
}

// Every byte at every place of a text long enough for the eight-byte skipping, against
// an escaper written byte by byte.
TEST(ToolJson, EveryByteAtEveryPlace) {
    const auto expected = [](const std::string& text) {
        std::string json = "\"";
        for (const char ch : text) {
            const unsigned char c = static_cast<unsigned char>(ch);
            char escape[8];
            if (c == '"' || c == '\\') {
                json += '\\';
                json += ch;
            } else if (c == '\n') {
                json += "\\n";
            } else if (c == '\r') {
                json += "\\r";
            } else if (c == '\t') {
                json += "\\t";
            } else if (c < 0x20 || c > 0x7E) {
                std::snprintf(escape, sizeof escape, "\\u%04x", c);
                json += escape;
            } else {
                json += ch;
            }
        }
        return json + "\"";
    };
    for (int byte = 1; byte < 256; ++byte) {
        for (size_t at = 0; at < 20; ++at) {
            std::string text(20, 'A');
            text[at] = static_cast<char>(byte);
            std::string out;
            orvane_tools::appendJsonString(&out, text.c_str());
            ASSERT_EQ(out, expected(text)) << byte << " at " << at;
        }
    }
}

}  // namespace
