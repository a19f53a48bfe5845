// Virgin Islands licence barcodes: a fixed "117ANSI 636062" header, then AAMVA-style
// element identifiers. Instead of walking the elements, each expected identifier is
// searched in the whole text and its value runs up to the next expected identifier.
// Two layouts differ only in the identifier of the first name.
#include <iterator>

#include "documents/national.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

// Both layouts in one table: the identifier of each, then the slot it fills. They
// differ in row 6 only, where the second layout deliberately reads the first name
// from "DTT".
constexpr VirginIslandsElementRow kElementOrder[] = {
    {{"DCA", "DCA"}, field::vehicleClassJurisdiction},
    {{"DCB", "DCB"}, field::restrictionCodeAlt},
    {{"DCD", "DCD"}, field::endorsementsCodeAlt},
    {{"DBA", "DBA"}, field::expirationDate},
    {{"DCS", "DCS"}, field::lastName},
    {{"DCT", "DTT"}, field::firstName},
    {{"DCU", "DCU"}, field::nameSuffix},
    {{"DBD", "DBD"}, field::issueDate},
    {{"DBB", "DBB"}, field::birthdateAlt},
    {{"DBC", "DBC"}, field::gender},
    {{"DAT", "DAT"}, field::eyeColor},  // deliberately "DAT", not "DAY"
    {{"DAU", "DAU"}, field::heightAlt},
    {{"DCE", "DCE"}, field::weightRange},
    {{"DAG", "DAG"}, field::address1},
    {{"DAI", "DAI"}, field::city},
    {{"DAJ", "DAJ"}, field::jurisdictionCode},
    {{"DAK", "DAK"}, field::postalCode},
    {{"DAQ", "DAQ"}, field::licenseNumber},
    {{"DCF", "DCF"}, field::documentDiscriminator},
    {{"DCG", "DCG"}, field::countryCode},
    {{"DCH", "DCH"}, kVirginIslandsVehicleCodes},
};
static_assert(std::size(kElementOrder) == 21);

constexpr char kHeader[] = "117ANSI 636062";
constexpr int32_t kHeaderLength = 14;
constexpr int32_t kIdLength = 3;

TextSpan idSpan(size_t row, VirginIslandsLayout layout) {
    return TextSpan{kElementOrder[row].id[static_cast<int>(layout)], kIdLength};
}

// The value of a row: from its identifier's first occurrence anywhere in the text up
// to the next row's identifier after it; the last row runs to the end. Empty when the
// identifier is absent, the next one does not follow, or follows at once.
TextSpan elementValue(TextSpan text, size_t row, VirginIslandsLayout layout) {
    const int32_t at = spanFind(text, idSpan(row, layout));
    if (at < 0) return TextSpan{nullptr, 0};
    TextSpan value{text.data + at + kIdLength, text.length - at - kIdLength};
    if (row + 1 < std::size(kElementOrder)) {
        const int32_t end = spanFind(value, idSpan(row + 1, layout));
        if (end <= 0) return TextSpan{nullptr, 0};
        value.length = end;
    }
    trimIf(&value, isWhiteSpace);
    return value;
}

int32_t readVirginIslands(const char* text, int32_t length, ParsedRecord* record,
                          VirginIslandsLayout layout) {
    // Foreign text is deliberately a success that writes nothing: the driver then
    // passes over the row because it filled no slot.
    if (length < kHeaderLength || spanEquals(TextSpan{text, kHeaderLength}, kHeader) != 0) return kOk;
    const TextSpan whole{text, length};
    for (size_t row = 0; row < std::size(kElementOrder); ++row) {
        const TextSpan value = elementValue(whole, row, layout);
        if (spanUsable(value)) {
            setFieldMapped(record, kElementOrder[row].field, value, nullptr, nullptr, '\0');
        }
    }
    setFieldLiteral(record, field::documentType, "DL");
    setFieldLiteral(record, field::country, "Virgin Islands of the U.S.");
    return kOk;
}

}  // namespace

std::span<const VirginIslandsElementRow> virginIslandsElementOrder() { return kElementOrder; }

// Foreign text fills nothing, so the header is necessary for a reading.
bool mayReadVirginIslandsLicence(const TextFacts& f) { return f.startsWith(kHeader); }

int32_t parseVirginIslandsLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    return readVirginIslands(text, length, record, VirginIslandsLayout::Dct);
}

int32_t parseVirginIslandsLicenceDtt(char* text, int32_t length, ParsedRecord* record,
                                     const ParseClock*) {
    return readVirginIslands(text, length, record, VirginIslandsLayout::Dtt);
}

}  // namespace orvane
