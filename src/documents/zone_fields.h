// The fields of a machine-readable zone where its layout puts them, for callers who
// want what no answer reads (nationality, optional data) or the fields as printed.
#pragma once

#include "engine/format.h"

namespace orvane {

// Visits the fields of a zone given as zone characters only, in the order the zone holds
// them, under these names: documentCode, issuingState, documentNumber, nationality,
// birthDate, sex, expiryDate, optionalData1, optionalData2 (identity cards of three
// lines), names; each trimmed of "<" fillers at both ends. A three-line card's document
// number longer than nine characters continues in its optional data after a "<", as the
// zone standard lets it, and is visited whole, without its check digit.
void visitZoneElements(TextSpan zone, ElementVisitor visit, void* context);

}  // namespace orvane
