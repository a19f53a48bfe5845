#include <gtest/gtest.h>

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

}  // namespace
