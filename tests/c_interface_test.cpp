#include "api/answers.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace orvane {
namespace {

int32_t answersOne(const ParsedRecord*, int32_t* value) {
    *value = 1;
    return kOk;
}
int32_t answersNothing(const ParsedRecord*, int32_t* value) {
    *value = 7;  // must not reach the caller
    return kErrNoAnswer;
}

TEST(AnswerFlag, StoresOnlyOnSuccess) {
    SVT_ParserHandle handle{};
    int value = 5;
    EXPECT_EQ(answerFlag(&handle, &value, answersOne), kOk);
    EXPECT_EQ(value, 1);
    value = 5;
    EXPECT_EQ(answerFlag(&handle, &value, answersNothing), kErrNoAnswer);
    EXPECT_EQ(value, 5);
}

TEST(AnswerCheck, OnlyResultsOneToThreeReachTheStatus) {
    SVT_ParserHandle handle{};
    struct Case {
        int32_t result;
        int expectedReturn;
        int expectedStatus;
    };
    const Case cases[] = {{1, kOk, 1}, {3, kOk, 3}, {0, 0, 42}, {4, 4, 42}, {-21, -21, 42}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.result);
        int status = 42;
        EXPECT_EQ(answerCheck(&handle, &status, [&](ParserHandle&) { return c.result; }), c.expectedReturn);
        EXPECT_EQ(status, c.expectedStatus);
    }
}

TEST(AnswerText, RefusesNullHandleAndNegativeCapacity) {
    char buffer[4];
    auto derive = [](const ParsedRecord*, char*, int32_t) -> int32_t { return kOk; };
    SVT_ParserHandle handle{};
    EXPECT_EQ(answerText(nullptr, buffer, 4, derive), kErrInvalidArgument);
    EXPECT_EQ(answerText(&handle, buffer, -1, derive), kErrInvalidArgument);
    EXPECT_EQ(answerText(&handle, buffer, 4, derive), kOk);
}

}  // namespace
}  // namespace orvane
