// The raw elements of a document: what its text carries, id and value, in document
// order. AAMVA-style barcodes give every data element under its three-character id,
// zones their fields under the names of the zone layouts, and the other families the
// fields their readers stored, under the record's names.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

// Walks the elements of the record's reading; text is the winner's text as framed.
void visitElements(const ParsedRecord* record, TextSpan text, ElementVisitor visit, void* context);

// The record's name of a slot ("firstName", "licenseNumber", ...), or null for a slot
// that a family keeps for itself.
const char* fieldName(FieldId id);

}  // namespace orvane
