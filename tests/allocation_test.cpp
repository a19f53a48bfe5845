// Counts every allocation made by the code linked into this program (the library's
// objects included): the linker routes malloc, calloc, realloc and operator new here.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "answer_checks.h"
#include "orvane_parser.h"
#include "sample_inputs.h"

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* pointer, size_t size);
void* __real__Znwm(size_t size);
void* __real__Znam(size_t size);
}

namespace {
bool counting = false;
int allocations = 0;

void note() {
    if (counting) ++allocations;
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
    note();
    return __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
    note();
    return __real_calloc(count, size);
}
void* __wrap_realloc(void* pointer, size_t size) {
    note();
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
                      SVT_parse(handle, input.data(), static_cast<int>(input.size()));
                      orvane::testing::askEverything(handle);  // every getter at several capacities
                  }
              }),
              0);
    SVT_delete(handle);
}

}  // namespace
