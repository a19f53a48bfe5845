// Counts every allocation made by the code linked into this program (the library's
// objects included): the linker routes malloc, calloc, realloc and operator new here.
// The wrappers can also make one allocation fail, and can leave a guard after each block
// to show whether anything writes past the handle's buffers.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "../tools/answer_table.h"
#include "answer_checks.h"
#include "api/handle.h"
#include "orvane_parser.h"
#include "sample_inputs.h"

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* pointer, size_t size);
void* __real__Znwm(size_t size);
void* __real__Znam(size_t size);
// The nothrow forms, which the standard library's temporary buffers use; the reference
// travels as a pointer.
void* __real__ZnwmRKSt9nothrow_t(size_t size, const void* tag);
void* __real__ZnamRKSt9nothrow_t(size_t size, const void* tag);
}

namespace {
bool counting = false;
int allocations = 0;
int failIn = 0;          // when positive, the malloc, calloc or realloc that many from now fails
bool guarding = false;   // malloc and calloc leave kGuardSize pattern bytes after each block

constexpr size_t kGuardSize = 64;
constexpr unsigned char kGuardByte = 0xA5;

void note() {
    if (counting) ++allocations;
}

// Counts the allocation; true when it is the one that must fail.
bool noteAndFail() {
    note();
    return failIn > 0 && --failIn == 0;
}

void* guarded(void* block, size_t size) {
    if (block != nullptr) std::memset(static_cast<unsigned char*>(block) + size, kGuardByte, kGuardSize);
    return block;
}

// Runs the body and returns how many allocations it made.
template <typename Body>
int allocationsDuring(Body body) {
    allocations = 0;
    counting = true;
    body();
    counting = false;
    return allocations;
}
}  // namespace

extern "C" {
void* __wrap_malloc(size_t size) {
    if (noteAndFail()) return nullptr;
    if (guarding) return guarded(__real_malloc(size + kGuardSize), size);
    return __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
    if (noteAndFail()) return nullptr;
    if (guarding) return guarded(__real_calloc(count * size + kGuardSize, 1), count * size);
    return __real_calloc(count, size);
}
void* __wrap_realloc(void* pointer, size_t size) {
    if (noteAndFail()) return nullptr;
    return __real_realloc(pointer, size);
}
void* __wrap__Znwm(size_t size) {
    note();
    return __real__Znwm(size);
}
void* __wrap__Znam(size_t size) {
    note();
    return __real__Znam(size);
}
void* __wrap__ZnwmRKSt9nothrow_t(size_t size, const void* tag) {
    note();
    return __real__ZnwmRKSt9nothrow_t(size, tag);
}
void* __wrap__ZnamRKSt9nothrow_t(size_t size, const void* tag) {
    note();
    return __real__ZnamRKSt9nothrow_t(size, tag);
}
}

namespace {

TEST(Allocations, SmallInputsAllocateTheBuffersOnce) {
    SVT_ParserHandle* handle = SVT_create();
    ASSERT_NE(handle, nullptr);
    const std::string first = "first input";
    EXPECT_EQ(allocationsDuring([&] { SVT_parse(handle, first.data(), static_cast<int>(first.size())); }), 2);
    std::vector<std::string> inputs;
    for (int size = 1; size <= 8192; size = size * 2 + 1) inputs.emplace_back(static_cast<size_t>(size), 'A');
    inputs.emplace_back(8192, 'B');
    EXPECT_EQ(allocationsDuring([&] {
                  for (const std::string& input : inputs) {
                      SVT_parse(handle, input.data(), static_cast<int>(input.size()));
                  }
              }),
              0);
    SVT_delete(handle);
}

TEST(Allocations, ParsesAndAnswersAllocateNothingOnceTheBuffersExist) {
    const std::vector<std::string> inputs = orvane::testing::sampleInputs();
    ASSERT_FALSE(inputs.empty());
    SVT_ParserHandle* handle = SVT_create();
    SVT_parse(handle, "x", 1);
    EXPECT_EQ(allocationsDuring([&] {
                  for (const std::string& input : inputs) {
                      // Both parses, each followed by every question at several capacities.
                      orvane::testing::parseBothWaysAndAsk(handle, input.data(), static_cast<int>(input.size()));
                  }
              }),
              0);
    SVT_delete(handle);
}

TEST(Allocations, ZonesOnlyTheLenientParseReadsAllocateNothing) {
    // Their repairs and rows work in the handle's buffers and on the stack.
    std::vector<std::string> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(ORVANE_SOURCE_DIR) / "tests" /
                                                                 "data" / "zones")) {
        if (entry.path().extension() == ".txt") inputs.push_back(orvane::testing::readBytes(entry.path()));
    }
    ASSERT_FALSE(inputs.empty());
    SVT_ParserHandle* handle = SVT_create();
    SVT_parseLenient(handle, "x", 1);
    EXPECT_EQ(allocationsDuring([&] {
                  for (const std::string& input : inputs) {
                      orvane::testing::parseBothWaysAndAsk(handle, input.data(), static_cast<int>(input.size()));
                  }
              }),
              0);
    SVT_delete(handle);
}

std::string sampleText(const char* name) {
    return orvane::testing::readBytes(std::filesystem::path(ORVANE_SOURCE_DIR) / "samples" / name);
}

// Every answer of the handle with its status, as one text.
std::string answersOf(SVT_ParserHandle* handle) {
    std::string all;
    char buffer[512];
    for (const auto& answer : orvane_tools::kTextAnswers) {
        const int status = answer.getter(handle, buffer, sizeof buffer);
        all += std::string(answer.name) + '=' + (status == SVT_OK ? std::string(buffer) : "#" + std::to_string(status)) + ' ';
    }
    for (const auto& answer : orvane_tools::kFlagAnswers) {
        int value = -1;
        const int status = answer.getter(handle, &value);
        all += std::string(answer.name) + '=' + std::to_string(status) + '/' + std::to_string(value) + ' ';
    }
    int check = -1;
    all += "id=" + std::to_string(SVT_validateDocumentId(handle, &check)) + '/' + std::to_string(check);
    check = -1;
    all += " jurisdiction=" + std::to_string(SVT_validateJurisdictionCode(handle, &check)) + '/' + std::to_string(check);
    return all;
}

TEST(Allocations, AFailedBufferAllocationAnswersMinus24AndTheHandleRecovers) {
    const std::string sample = sampleText("aamva-2013-arizona.txt");
    const std::string large = sample + std::string(10000 - sample.size(), 'Q');  // grows the buffers
    SVT_ParserHandle* reference = SVT_create();
    const std::string noAnswers = answersOf(reference);
    ASSERT_EQ(SVT_parse(reference, large.data(), static_cast<int>(large.size())), SVT_OK);
    const std::string largeAnswers = answersOf(reference);
    ASSERT_EQ(SVT_parse(reference, sample.data(), static_cast<int>(sample.size())), SVT_OK);
    const std::string sampleAnswers = answersOf(reference);
    SVT_delete(reference);

    struct Case {
        const char* name;
        bool parsedBefore;  // the handle holds buffers too small for the input
        const std::string& input;
        int failing;        // which of the parse's allocations fails
    };
    const Case cases[] = {
        {"fresh handle, first buffer", false, sample, 1},
        {"fresh handle, second buffer", false, sample, 2},
        {"growing handle, first buffer", true, large, 1},
        {"growing handle, second buffer", true, large, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SVT_ParserHandle* handle = SVT_create();
        if (c.parsedBefore) {
            ASSERT_EQ(SVT_parse(handle, sample.data(), static_cast<int>(sample.size())), SVT_OK);
        }
        failIn = c.failing;
        const int status = SVT_parse(handle, c.input.data(), static_cast<int>(c.input.size()));
        const bool failed = failIn == 0;
        failIn = 0;
        ASSERT_TRUE(failed) << "the parse made fewer allocations";
        EXPECT_EQ(status, SVT_ERR_NO_WORK_BUFFER);
        // No answer survives from an earlier parse: its buffers are gone.
        EXPECT_EQ(answersOf(handle), noAnswers);
        EXPECT_EQ(SVT_parse(handle, sample.data(), static_cast<int>(sample.size())), SVT_OK);
        EXPECT_EQ(answersOf(handle), sampleAnswers);
        EXPECT_EQ(SVT_parse(handle, large.data(), static_cast<int>(large.size())), SVT_OK);
        EXPECT_EQ(answersOf(handle), largeAnswers);
        SVT_delete(handle);
    }
}

// Where the pattern after one of the handle's buffers changed, or "" when it is intact.
std::string guardFault(const SVT_ParserHandle* handle) {
    const struct {
        const char* name;
        const char* buffer;
        int32_t capacity;
    } buffers[] = {{"input copy, framings and repaired input", handle->inputCopy, 4 * handle->inputCopyCapacity},
                   {"work store", handle->workStore, handle->workStoreCapacity}};
    for (const auto& b : buffers) {
        for (size_t i = 0; i < kGuardSize; ++i) {
            if (static_cast<unsigned char>(b.buffer[b.capacity + i]) != kGuardByte) {
                return std::string(b.name) + " overwritten at capacity + " + std::to_string(i);
            }
        }
    }
    return "";
}

TEST(Allocations, NothingIsWrittenPastTheHandlesBuffers) {
    std::vector<std::string> inputs = orvane::testing::sampleInputs();
    ASSERT_FALSE(inputs.empty());
    const std::string arizona = sampleText("aamva-2013-arizona.txt");
    // As long as the first buffers, then longer, so that they grow.
    inputs.push_back(arizona + std::string(8192 - arizona.size(), 'Q'));
    inputs.push_back(arizona + std::string(10000 - arizona.size(), 'Q'));
    guarding = true;
    SVT_ParserHandle* handle = SVT_create();
    for (const std::string& input : inputs) {
        SCOPED_TRACE(input.substr(0, 40));
        for (bool lenient : {false, true}) {
            SCOPED_TRACE(lenient ? "lenient" : "strict");
            const int length = static_cast<int>(input.size());
            lenient ? SVT_parseLenient(handle, input.data(), length) : SVT_parse(handle, input.data(), length);
            ASSERT_EQ(guardFault(handle), "") << "after the parse";
            ASSERT_EQ(orvane::testing::askEverything(handle), "");
            ASSERT_EQ(guardFault(handle), "") << "after the answers";
        }
    }
    SVT_delete(handle);
    guarding = false;
}

}  // namespace
