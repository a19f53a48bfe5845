// Every answer of the C interface under the name the Java result object gives it, for
// the command-line tool, the sample tests and the fuzzer.
#pragma once

#include "api/java_fields.h"

namespace orvane_tools {

inline constexpr const auto& kTextAnswers = orvane::kJavaTextFields;
inline constexpr const auto& kFlagAnswers = orvane::kJavaFlagFields;

}  // namespace orvane_tools
