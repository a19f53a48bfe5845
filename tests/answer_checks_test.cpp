// The JSON checker the hostile-input, allocation and fuzz tests judge the result object
// with, and the object of every sample judged by it.
#include "answer_checks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

TEST(JsonChecker, AcceptsJsonAndNothingElse) {
    const struct {
        const char* text;
        bool valid;
    } cases[] = {
        {"{}", true},
        {" { \"a\" : [1, -2.5e+3, 0, true, false, null, {\"b\":\"\\u00e9\\n\\\"\\\\\\/\"}] } ", true},
        {"{\"status\":-25}", true},
        {"", false},
        {"{", false},
        {"{}}", false},
        {"{} x", false},
        {"{\"a\":1,}", false},
        {"{\"a\" 1}", false},
        {"{a:1}", false},
        {"[1 2]", false},
        {"01", false},
        {"-", false},
        {"1.", false},
        {"1e", false},
        {"\"tab\there\"", false},  // raw control byte
        {"\"\\x41\"", false},
        {"\"\\u00g0\"", false},
        {"\"\\u00", false},
        {"\"open", false},
        {"tru", false},
        {"[[[[[[[[[[]]]]]]]]]]", false},  // deeper than any result object
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(testing::JsonChecker::valid(c.text), c.valid);
    }
}

TEST(JsonChecker, TheObjectOfEverySampleBothWays) {
    testing::HandlePtr handle(SVT_create());
    std::vector<char> buffer(1 << 16);
    for (const auto& path : testing::samplePaths()) {
        SCOPED_TRACE(path.filename().string());
        const std::string input = testing::readBytes(path);
        for (bool lenient : {false, true}) {
            const int length = static_cast<int>(input.size());
            EXPECT_EQ(lenient ? SVT_parseLenient(handle.get(), input.data(), length)
                              : SVT_parse(handle.get(), input.data(), length),
                      SVT_OK);
            int needed = 0;
            ASSERT_EQ(SVT_getResultJson(handle.get(), buffer.data(), static_cast<int>(buffer.size()), &needed), SVT_OK);
            EXPECT_TRUE(testing::JsonChecker::valid(buffer.data())) << buffer.data();
        }
    }
}

}  // namespace
}  // namespace orvane
