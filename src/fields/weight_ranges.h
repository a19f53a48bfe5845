// The texts of the weight-range digit 0..9, in kilograms and in pounds.
#pragma once

#include <cstdint>

namespace orvane {

// The text of the range, or null for a digit outside 0..9.
const char* weightRangeKilograms(int64_t digit);
const char* weightRangePounds(int64_t digit);

}  // namespace orvane
