// Puerto Rican licences are AAMVA barcodes issued under the issuer number 604431: the
// header "@", LF, RS, CR, "ANSI 604431", version and directory, then one element per
// line, the first behind the "DL" or "ID" subfile designator. That issuer number is
// what tells the layout apart; the record then answers Puerto Rico as the country,
// where "DCG" says "USA".
//
//   DAQ  licence number     DCS  last name        DAC  first name     DAD  middle name
//   DCU  name suffix        DBB  birth date       DBD  issue date     DBA  expiry date
//        (all three month first, MMDDYYYY)
//   DBC  sex, "1" or "2"    DAY  eye colour       DAZ  hair colour    DAU  height
//   DAW  weight (pounds)    DAG  street           DAH  second line    DAI  city
//   DAJ  "PR"               DAK  postal code      DCA  vehicle class  DCB  restrictions
//   DCD  endorsements       DCF  document discriminator
#include <iterator>

#include "documents/national.h"
#include "documents/national_fields.h"
#include "engine/status.h"

namespace orvane {
namespace {

constexpr char kPuertoRicoIssuer[] = "604431";

constexpr ElementRule kPuertoRicoElements[] = {
    {"DAQ", field::licenseNumber, storeElementText},
    {"DCS", field::lastName, storeElementText},
    {"DAC", field::firstName, storeElementText},
    {"DAD", field::middleName, storeElementText},
    {"DCU", field::nameSuffix, storeElementText},
    {"DBB", field::birthdate, storeMonthFirstDate},
    {"DBD", field::issueDate, storeMonthFirstDate},
    {"DBA", field::expirationDate, storeMonthFirstDate},
    {"DBC", field::gender, storeElementText},
    {"DAY", field::eyeColor, storeElementText},
    {"DAZ", field::hairColor, storeElementText},
    {"DAU", field::heightAlt, storeElementText},
    {"DAW", field::weightPounds, storeElementText},
    {"DAG", field::address1, storeElementText},
    {"DAH", field::address2, storeElementText},
    {"DAI", field::city, storeElementText},
    {"DAJ", field::jurisdictionCode, storeElementText},
    {"DAK", field::postalCode, storeElementText},
    {"DCA", field::vehicleClassJurisdiction, storeElementText},
    {"DCB", field::restrictionCodeAlt, storeElementText},
    {"DCD", field::endorsementsCodeAlt, storeElementText},
    {"DCF", field::documentDiscriminator, storeElementText},
};
static_assert(std::size(kPuertoRicoElements) == 22);

constexpr ElementLayout kPuertoRicoLayout{kPuertoRicoElements, kPuertoRicoIssuer, issuerInHeader,
                                          "Puerto Rico", "PRI"};

}  // namespace

// The issuer number early in the header; its digits are the caller's own, since the
// reader's Latin-1 fold makes no digits.
bool mayReadPuertoRicoLicence(const TextFacts& f) {
    const int32_t at = f.find(kPuertoRicoIssuer);
    return at >= 0 && at < 32;
}

int32_t parsePuertoRicoLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    if (int32_t status = readElementLayout(text, length, record, kPuertoRicoLayout)) return status;
    setFieldLiteral(record, field::iin, kPuertoRicoIssuer);
    return kOk;
}

}  // namespace orvane
