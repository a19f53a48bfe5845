#include "engine/registry.h"

namespace orvane {

// The format families register their rows here as they are built.
std::span<const FormatDescriptor> formatRegistry() { return {}; }

}  // namespace orvane
