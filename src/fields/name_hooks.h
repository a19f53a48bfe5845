// The GenericSplitter: whole-name cuts for the rows that ask for them. It answers only
// with text of the record.
#pragma once

#include <cstdint>

#include "fields/names.h"

namespace orvane {

// The splitters of the rows whose useGenericSplitter is 0.
extern const GenericSplitter kGenericSplitter;

}  // namespace orvane
