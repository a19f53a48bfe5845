// The JSON checker the hostile-input, allocation and fuzz tests judge the result object with.
#include "answer_checks.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace orvane
