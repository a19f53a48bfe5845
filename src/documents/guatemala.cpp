// Guatemalan licences carry AAMVA element identifiers without the AAMVA header: one
// element per line, a three-letter identifier followed by its value (lines that hold
// no known element are passed over). The country is named in full in "DCG", and that
// name in text that does not open with the AAMVA "@" is what tells the layout apart.
//
//   DAQ  licence number (the holder's 13-digit CUI)
//   DCS  surnames                      DAC  first name        DAD  further given names
//   DBB  birth date                    DBD  issue date        DBA  expiry date
//        (all three day first, DDMMYYYY)
//   DBC  sex, "M" or "F"               DAG  street address    DAI  municipality
//   DCA  licence type (A, B, C, M, E)  DCG  "GUATEMALA"
#include <iterator>

#include "documents/national.h"
#include "documents/national_fields.h"

namespace orvane {
namespace {

constexpr ElementRule kGuatemalaElements[] = {
    {"DAQ", field::licenseNumber, storeElementText},
    {"DCS", field::lastName, storeElementText},
    {"DAC", field::firstName, storeElementText},
    {"DAD", field::middleName, storeElementText},
    {"DBB", field::birthdate, storeDayFirstDate},
    {"DBD", field::issueDate, storeDayFirstDate},
    {"DBA", field::expirationDate, storeDayFirstDate},
    {"DBC", field::gender, storeElementText},
    {"DAG", field::address1, storeElementText},
    {"DAI", field::city, storeElementText},
    {"DCA", field::vehicleClassJurisdiction, storeElementText},
    {"DCG", field::country, ignoreElement},
};
static_assert(std::size(kGuatemalaElements) == 12);

constexpr ElementLayout kGuatemalaLayout{kGuatemalaElements, "GUATEMALA", countryNameInHeaderlessText,
                                         "Republic of Guatemala", "GTM"};

}  // namespace

bool mayReadGuatemalaLicence(const TextFacts& f) { return mayReadCountryElements(f, kGuatemalaLayout.marker); }

int32_t parseGuatemalaLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    return readElementLayout(text, length, record, kGuatemalaLayout);
}

}  // namespace orvane
