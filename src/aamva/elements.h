// The data elements of an AAMVA barcode as its text holds them, for callers who want
// elements that no answer reads.
#pragma once

#include "engine/format.h"

namespace orvane {

// Visits every data element after the header and subfile directory, in text order: its
// three-character id and its value trimmed of blanks, the subfile designator that opens
// a subfile left out. Text without an AAMVA header is read as element lines from its start.
void visitAamvaElements(TextSpan text, ElementVisitor visit, void* context);

}  // namespace orvane
