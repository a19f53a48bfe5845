// The three reference tables (countries, issuer identification numbers, jurisdictions)
// and the lookups over them. Searches are linear except for the IINs, whose two
// gap-free groups are indexed directly.
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "fields/countries.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr size_t kCountryRowCount = 259;

// ISO 3166-1 alpha-3 codes by code, the specimen code last. A code with several
// accepted names has one row per name, the first giving its name.
constexpr CountryRow kCountryRows[] = {
    {"ARUBA", "ABW"},
    {"AFGHANISTAN", "AFG"},
    {"ANGOLA", "AGO"},
    {"ANGUILLA", "AIA"},
    {"ALAND ISLANDS", "ALA"},
    {"ALBANIA", "ALB"},
    {"ANDORRA", "AND"},
    {"UNITED ARAB EMIRATES", "ARE"},
    {"ARGENTINA", "ARG"},
    {"ARMENIA", "ARM"},
    {"AMERICAN SAMOA", "ASM"},
    {"ANTARCTICA", "ATA"},
    {"FRENCH SOUTHERN TERRITORIES", "ATF"},
    {"ANTIGUA", "ATG"},
    {"AUSTRALIA", "AUS"},
    {"AUSTRIA", "AUT"},
    {"AZERBAIJAN", "AZE"},
    {"BURUNDI", "BDI"},
    {"BELGIUM", "BEL"},
    {"BENIN", "BEN"},
    {"BONAIRE", "BES"},
    {"BURKINA FASO", "BFA"},
    {"BANGLADESH", "BGD"},
    {"BULGARIA", "BGR"},
    {"BAHRAIN", "BHR"},
    {"BAHAMAS", "BHS"},
    {"BOSNIA AND HERZEGOVINA", "BIH"},
    {"SAINT BARTHELEMY", "BLM"},
    {"BELARUS", "BLR"},
    {"BELIZE", "BLZ"},
    {"BERMUDA", "BMU"},
    {"BOLIVIA", "BOL"},
    {"BRAZIL", "BRA"},
    {"BARBADOS", "BRB"},
    {"BRUNEI DARUSSALAM", "BRN"},
    {"BHUTAN", "BTN"},
    {"BOUVET ISLAND", "BVT"},
    {"BOTSWANA", "BWA"},
    {"CENTRAL AFRICAN REPUBLIC", "CAF"},
    {"CANADA", "CAN"},
    {"COCOS", "CCK"},
    {"KEELING ISLANDS", "CCK"},
    {"SWITZERLAND", "CHE"},
    {"CHILE", "CHL"},
    {"CHINA", "CHN"},
    {"COTE D'IVOIRE", "CIV"},
    {"CAMEROON", "CMR"},
    {"CONGO, THE DEMOCRATIC REPUBLIC OF THE", "COD"},
    {"CONGO", "COG"},
    {"COOK ISLANDS", "COK"},
    {"COLOMBIA", "COL"},
    {"COMOROS", "COM"},
    {"CAPE VERDE", "CPV"},
    {"COSTA RICA", "CRI"},
    {"CUBA", "CUB"},
    {"CURACAO", "CUW"},
    {"CHRISTMAS ISLAND", "CXR"},
    {"CAYMAN ISLANDS", "CYM"},
    {"CYPRUS", "CYP"},
    {"CZECH REPUBLIC", "CZE"},
    {"GERMANY", "DEU"},
    {"DJIBOUTI", "DJI"},
    {"DOMINICA", "DMA"},
    {"DENMARK", "DNK"},
    {"DOMINICAN REPUBLIC", "DOM"},
    {"ALGERIA", "DZA"},
    {"ECUADOR", "ECU"},
    {"EGYPT", "EGY"},
    {"ERITREA", "ERI"},
    {"WESTERN SAHARA", "ESH"},
    {"SPAIN", "ESP"},
    {"ESTONIA", "EST"},
    {"ETHIOPIA", "ETH"},
    {"FINLAND", "FIN"},
    {"FIJI", "FJI"},
    {"FALKLAND ISLANDS", "FLK"},
    {"MALVINAS", "FLK"},
    {"FRANCE", "FRA"},
    {"FAROE ISLANDS", "FRO"},
    {"MICRONESIA", "FSM"},
    {"GABON", "GAB"},
    {"UNITED KINGDOM", "GBR"},
    {"GEORGIA", "GEO"},
    {"GUERNSEY", "GGY"},
    {"GHANA", "GHA"},
    {"GIBRALTAR", "GIB"},
    {"GUINEA", "GIN"},
    {"GUADELOUPE", "GLP"},
    {"GAMBIA", "GMB"},
    {"GUINEA-BISSAU", "GNB"},
    {"EQUATORIAL GUINEA", "GNQ"},
    {"GREECE", "GRC"},
    {"GRENADA", "GRD"},
    {"GREENLAND", "GRL"},
    {"GUATEMALA", "GTM"},
    {"FRENCH GUIANA", "GUF"},
    {"GUAM", "GUM"},
    {"GUYANA", "GUY"},
    {"HONG KONG", "HKG"},
    {"HEARD ISLAND AND MCDONALD ISLANDS", "HMD"},
    {"HONDURAS", "HND"},
    {"CROATIA", "HRV"},
    {"HAITI", "HTI"},
    {"HUNGARY", "HUN"},
    {"INDONESIA", "IDN"},
    {"ISLE OF MAN", "IMN"},
    {"INDIA", "IND"},
    {"BRITISH INDIAN OCEAN TERRITORY", "IOT"},
    {"IRELAND", "IRL"},
    {"IRAN, ISLAMIC REPUBLIC OF", "IRN"},
    {"IRAQ", "IRQ"},
    {"ICELAND", "ISL"},
    {"ISRAEL", "ISR"},
    {"ITALY", "ITA"},
    {"JAMAICA", "JAM"},
    {"JERSEY", "JEY"},
    {"JORDAN", "JOR"},
    {"JAPAN", "JPN"},
    {"KAZAKHSTAN", "KAZ"},
    {"KENYA", "KEN"},
    {"KYRGYZSTAN", "KGZ"},
    {"CAMBODIA", "KHM"},
    {"KIRIBATI", "KIR"},
    {"SAINT KITTS AND NEVIS", "KNA"},
    {"KOREA, REPUBLIC OF", "KOR"},
    {"KUWAIT", "KWT"},
    {"LAO PEOPLE'S DEMOCRATIC REPUBLIC", "LAO"},
    {"LEBANON", "LBN"},
    {"LIBERIA", "LBR"},
    {"LIBYA", "LBY"},
    {"SAINT LUCIA", "LCA"},
    {"LIECHTENSTEIN", "LIE"},
    {"SRI LANKA", "LKA"},
    {"LESOTHO", "LSO"},
    {"LITHUANIA", "LTU"},
    {"LUXEMBOURG", "LUX"},
    {"LATVIA", "LVA"},
    {"MACAO", "MAC"},
    {"SAINT MARTIN", "MAF"},
    {"MOROCCO", "MAR"},
    {"MONACO", "MCO"},
    {"MOLDOVA, REPUBLIC OF", "MDA"},
    {"MADAGASCAR", "MDG"},
    {"MALDIVES", "MDV"},
    {"MEXICO", "MEX"},
    {"MARSHALL ISLANDS", "MHL"},
    {"MACEDONIA, THE FORMER YUGOSLAV REPUBLIC OF", "MKD"},
    {"MALI", "MLI"},
    {"MALTA", "MLT"},
    {"MYANMAR", "MMR"},
    {"MONTENEGRO", "MNE"},
    {"MONGOLIA", "MNG"},
    {"NORTHERN MARIANA ISLANDS", "MNP"},
    {"MOZAMBIQUE", "MOZ"},
    {"MAURITANIA", "MRT"},
    {"MONTSERRAT", "MSR"},
    {"MARTINIQUE", "MTQ"},
    {"MAURITIUS", "MUS"},
    {"MALAWI", "MWI"},
    {"MALAYSIA", "MYS"},
    {"MAYOTTE", "MYT"},
    {"NAMIBIA", "NAM"},
    {"NEW CALEDONIA", "NCL"},
    {"NIGER", "NER"},
    {"NORFOLK ISLAND", "NFK"},
    {"NIGERIA", "NGA"},
    {"NICARAGUA", "NIC"},
    {"NIUE", "NIU"},
    {"NETHERLANDS", "NLD"},
    {"NORWAY", "NOR"},
    {"NEPAL", "NPL"},
    {"NAURU", "NRU"},
    {"NEW ZEALAND", "NZL"},
    {"OMAN", "OMN"},
    {"PAKISTAN", "PAK"},
    {"PANAMA", "PAN"},
    {"PITCAIRN", "PCN"},
    {"PERU", "PER"},
    {"PHILIPPINES", "PHL"},
    {"PALAU", "PLW"},
    {"PAPUA NEW GUINEA", "PNG"},
    {"POLAND", "POL"},
    {"PUERTO RICO", "PRI"},
    {"KOREA, DEMOCRATIC PEOPLE'S REPUBLIC OF", "PRK"},
    {"PORTUGAL", "PRT"},
    {"PARAGUAY", "PRY"},
    {"PALESTINIAN TERRITORY, OCCUPIED", "PSE"},
    {"FRENCH POLYNESIA", "PYF"},
    {"QATAR", "QAT"},
    {"REUNION", "REU"},
    {"ROMANIA", "ROU"},
    {"RUSSIAN FEDERATION", "RUS"},
    {"RWANDA", "RWA"},
    {"SAUDI ARABIA", "SAU"},
    {"SUDAN", "SDN"},
    {"SENEGAL", "SEN"},
    {"SINGAPORE", "SGP"},
    {"SOUTH GEORGIA AND THE SOUTH SANDWICH ISLANDS", "SGS"},
    {"SAINT HELENA, ASCENSION AND TRISTAN DA CUNHA", "SHN"},
    {"SVALBARD AND JAN MAYEN", "SJM"},
    {"SOLOMON ISLANDS", "SLB"},
    {"SIERRA LEONE", "SLE"},
    {"EL SALVADOR", "SLV"},
    {"SAN MARINO", "SMR"},
    {"SOMALIA", "SOM"},
    {"SAINT PIERRE AND MIQUELON", "SPM"},
    {"SERBIA", "SRB"},
    {"SOUTH SUDAN", "SSD"},
    {"SAO TOME AND PRINCIPE", "STP"},
    {"SURINAME", "SUR"},
    {"SLOVAKIA", "SVK"},
    {"SLOVENIA", "SVN"},
    {"SWEDEN", "SWE"},
    {"SWAZILAND", "SWZ"},
    {"SINT MAARTEN", "SXM"},
    {"SEYCHELLES", "SYC"},
    {"SYRIAN ARAB REPUBLIC", "SYR"},
    {"TURKS AND CAICOS ISLANDS", "TCA"},
    {"CHAD", "TCD"},
    {"TOGO", "TGO"},
    {"THAILAND", "THA"},
    {"TAJIKISTAN", "TJK"},
    {"TOKELAU", "TKL"},
    {"TURKMENISTAN", "TKM"},
    {"TIMOR-LESTE", "TLS"},
    {"TONGA", "TON"},
    {"TRINIDAD AND TOBAGO", "TTO"},
    {"TUNISIA", "TUN"},
    {"TURKEY", "TUR"},
    {"TUVALU", "TUV"},
    {"TAIWAN, PROVINCE OF CHINA", "TWN"},
    {"TANZANIA, UNITED REPUBLIC OF", "TZA"},
    {"UGANDA", "UGA"},
    {"UKRAINE", "UKR"},
    {"UNITED STATES MINOR OUTLYING ISLANDS", "UMI"},
    {"URUGUAY", "URY"},
    {"UNITED STATES", "USA"},
    {"USA", "USA"},
    {"US", "USA"},
    {"U.S.", "USA"},
    {"U.S.A.", "USA"},
    {"UNITED STATES OF AMERICA", "USA"},
    {"UZBEKISTAN", "UZB"},
    {"VATICAN", "VAT"},
    {"HOLY SEE", "VAT"},
    {"VATICAN CITY STATE", "VAT"},
    {"SAINT VINCENT AND THE GRENADINES", "VCT"},
    {"VENEZUELA, BOLIVARIAN REPUBLIC OF", "VEN"},
    {"VIRGIN ISLANDS, BRITISH", "VGB"},
    {"VIRGIN ISLANDS, U.S.", "VIR"},
    {"VIET NAM", "VNM"},
    {"VANUATU", "VUT"},
    {"WALLIS AND FUTUNA", "WLF"},
    {"SAMOA", "WSM"},
    {"YEMEN", "YEM"},
    {"SOUTH AFRICA", "ZAF"},
    {"ZAMBIA", "ZMB"},
    {"ZIMBABWE", "ZWE"},
    {"UTOPIA", "UTO"},
    {nullptr, nullptr},  // terminator
};
static_assert(std::size(kCountryRows) == kCountryRowCount + 1);
static_assert(kCountryRows[kCountryRowCount].name == nullptr &&
              kCountryRows[kCountryRowCount].alpha3 == nullptr);

// Two groups, each gap-free and sorted, so that a row is found by subtraction.
constexpr int64_t kFirstGroupStart = 604426;
constexpr size_t kFirstGroupSize = 8;
constexpr int64_t kMainGroupStart = 636000;
constexpr size_t kMainGroupSize = 63;

constexpr IinRow kIinRows[] = {
    // Canadian and territorial group.
    {604426, "PE", "604426"},
    {604427, "AS", "604427"},
    {604428, "QC", "604428"},
    {604429, "YT", "604429"},
    {604430, "MP", "604430"},
    {604431, "PR", "604431"},
    {604432, "AB", "604432"},
    {604433, "NU", "604433"},
    // Main group.
    {636000, "VA", "636000"},
    {636001, "NY", "636001"},
    {636002, "MA", "636002"},
    {636003, "MD", "636003"},
    {636004, "NC", "636004"},
    {636005, "SC", "636005"},
    {636006, "CT", "636006"},
    {636007, "LA", "636007"},
    {636008, "MT", "636008"},
    {636009, "NM", "636009"},
    {636010, "FL", "636010"},
    {636011, "DE", "636011"},
    {636012, "ON", "636012"},
    {636013, "NS", "636013"},
    {636014, "CA", "636014"},
    {636015, "TX", "636015"},
    {636016, "NF", "636016"},
    {636017, "NB", "636017"},
    {636018, "IA", "636018"},
    {636019, "GM", "636019"},
    {636020, "CO", "636020"},
    {636021, "AR", "636021"},
    {636022, "KS", "636022"},
    {636023, "OH", "636023"},
    {636024, "VT", "636024"},
    {636025, "PA", "636025"},
    {636026, "AZ", "636026"},
    {636027, "DS", "636027"},
    {636028, "BC", "636028"},
    {636029, "OR", "636029"},
    {636030, "MO", "636030"},
    {636031, "WI", "636031"},
    {636032, "MI", "636032"},
    {636033, "AL", "636033"},
    {636034, "ND", "636034"},
    {636035, "IL", "636035"},
    {636036, "NJ", "636036"},
    {636037, "IN", "636037"},
    {636038, "MN", "636038"},
    {636039, "NH", "636039"},
    {636040, "UT", "636040"},
    {636041, "ME", "636041"},
    {636042, "SD", "636042"},
    {636043, "DC", "636043"},
    {636044, "SK", "636044"},
    {636045, "WA", "636045"},
    {636046, "KY", "636046"},
    {636047, "HI", "636047"},
    {636048, "MB", "636048"},
    {636049, "NV", "636049"},
    {636050, "ID", "636050"},
    {636051, "MS", "636051"},
    {636052, "RI", "636052"},
    {636053, "TN", "636053"},
    {636054, "NE", "636054"},
    {636055, "GA", "636055"},
    {636056, "CU", "636056"},
    {636057, "HL", "636057"},
    {636058, "OK", "636058"},
    {636059, "AK", "636059"},
    {636060, "WY", "636060"},
    {636061, "WV", "636061"},
    {636062, "VI", "636062"},
};
static_assert(std::size(kIinRows) == 71);
static_assert(kFirstGroupSize + kMainGroupSize == std::size(kIinRows));

// A second Alberta number, known to the lookups but not a row of the table.
constexpr int64_t kSecondAlbertaIin = 990876;
constexpr const char* kSecondAlbertaText = "990876";
constexpr const char* kAlbertaCode = "AB";

// United States, then the single-row territories, then Canada, then Mexico.
constexpr JurisdictionRow kJurisdictionRows[] = {
    {"United States", "AL", "Alabama"},
    {"United States", "AK", "Alaska"},
    {"United States", "AZ", "Arizona"},
    {"United States", "AR", "Arkansas"},
    {"United States", "CA", "California"},
    {"United States", "CO", "Colorado"},
    {"United States", "CT", "Connecticut"},
    {"United States", "DE", "Delaware"},
    {"United States", "DC", "District of Columbia"},
    {"United States", "FL", "Florida"},
    {"United States", "GA", "Georgia"},
    {"United States", "HI", "Hawaii"},
    {"United States", "ID", "Idaho"},
    {"United States", "IL", "Illinois"},
    {"United States", "IN", "Indiana"},
    {"United States", "IA", "Iowa"},
    {"United States", "KS", "Kansas"},
    {"United States", "KY", "Kentucky"},
    {"United States", "LA", "Louisiana"},
    {"United States", "ME", "Maine"},
    {"United States", "MD", "Maryland"},
    {"United States", "MA", "Massachusetts"},
    {"United States", "MI", "Michigan"},
    {"United States", "MN", "Minnesota"},
    {"United States", "MS", "Mississippi"},
    {"United States", "MO", "Missouri"},
    {"United States", "MT", "Montana"},
    {"United States", "NE", "Nebraska"},
    {"United States", "NV", "Nevada"},
    {"United States", "NH", "New Hampshire"},
    {"United States", "NJ", "New Jersey"},
    {"United States", "NM", "New Mexico"},
    {"United States", "NY", "New York"},
    {"United States", "NC", "North Carolina"},
    {"United States", "ND", "North Dakota"},
    {"United States", "OH", "Ohio"},
    {"United States", "OK", "Oklahoma"},
    {"United States", "OR", "Oregon"},
    {"United States", "PA", "Pennsylvania"},
    {"United States", "RI", "Rhode Island"},
    {"United States", "SC", "South Carolina"},
    {"United States", "SD", "South Dakota"},
    {"United States", "TN", "Tennessee"},
    {"United States", "TX", "Texas"},
    {"United States", "UT", "Utah"},
    {"United States", "VT", "Vermont"},
    {"United States", "VA", "Virginia"},
    {"United States", "WA", "Washington"},
    {"United States", "WV", "West Virginia"},
    {"United States", "WI", "Wisconsin"},
    {"United States", "WY", "Wyoming"},
    {"United States", "DS", "The U.S. Department of State"},
    // Territories of one row each: the country is the jurisdiction.
    {"American Samoa", "AS", "American Samoa"},
    {"Federated States of Micronesia", "FM", "Federated States of Micronesia"},
    {"Guam", "GM", "Guam"},
    {"Marshall Islands", "MH", "Marshall Islands"},
    {"Northern Mariana Islands", "MP", "Northern Mariana Islands"},
    {"Palau", "PW", "Palau"},
    {"Puerto Rico", "PR", "Puerto Rico"},
    {"Virgin Islands of the U.S.", "VI", "Virgin Islands of the U.S."},
    {"Wake Island", "WK", "Wake Island"},
    {"Canada", "AB", "Alberta"},
    {"Canada", "BC", "British Columbia"},
    {"Canada", "MB", "Manitoba"},
    {"Canada", "NB", "New Brunswick"},
    {"Canada", "NF", "Newfoundland and Labrador"},
    {"Canada", "NT", "Northwest Territory"},
    {"Canada", "NS", "Nova Scotia"},
    {"Canada", "NU", "Nunavut"},
    {"Canada", "ON", "Ontario"},
    {"Canada", "PE", "Prince Edward Island"},
    {"Canada", "QC", "Quebec"},
    {"Canada", "SK", "Saskatchewan"},
    {"Canada", "YT", "Yukon Territory"},
    {"Mexico", "AG", "Aguascalientes"},
    {"Mexico", "BA", "Baja California Norte"},
    {"Mexico", "BJ", "Baja California Sur"},
    {"Mexico", "CE", "Campeche"},
    {"Mexico", "CH", "Chihuahua"},
    {"Mexico", "CI", "Chiapas"},
    {"Mexico", "CL", "Colima"},
    {"Mexico", "CU", "Coahuila de Zaragoza"},
    {"Mexico", "DF", "Distrito Federal Mexico"},
    {"Mexico", "DO", "Durango"},
    {"Mexico", "EM", "Estado de Mexico"},
    {"Mexico", "GR", "Guerrero"},
    {"Mexico", "GU", "Guanajuato"},
    {"Mexico", "HL", "Hidalgo"},
    {"Mexico", "JL", "Jalisco"},
    {"Mexico", "MC", "Michoacan de Ocampo"},
    {"Mexico", "MR", "Morelos"},
    {"Mexico", "NA", "Nayarit"},
    {"Mexico", "NL", "Nuevo Leon"},
    {"Mexico", "OA", "Oaxaca"},
    {"Mexico", "PB", "Puebla"},
    {"Mexico", "QR", "Quintana Roo"},
    {"Mexico", "QU", "Queretaro de Arteaga"},
    {"Mexico", "SI", "Sinaloa"},
    {"Mexico", "SL", "San Luis Potosi"},
    {"Mexico", "SO", "Sonora"},
    {"Mexico", "TA", "Tamaulipas"},
    {"Mexico", "TB", "Tabasco"},
    {"Mexico", "TL", "Tlaxcala"},
    {"Mexico", "VC", "Veracruz Llave"},
    {"Mexico", "YU", "Yucatan"},
    {"Mexico", "ZA", "Zacatecas"},
};
static_assert(std::size(kJurisdictionRows) == 106);

// The direct indexing and the IIN texts rest on these properties of the rows.
constexpr bool textIsNumber(const IinRow& row) {
    uint64_t rest = row.number;
    for (int i = 5; i >= 0; --i) {
        if (row.text[i] != static_cast<char>('0' + rest % 10)) return false;
        rest /= 10;
    }
    return rest == 0 && row.text[6] == '\0' && row.code[0] != '\0' && row.code[2] == '\0';
}

constexpr bool groupIsGapFree(size_t first, size_t count, int64_t start) {
    for (size_t i = 0; i < count; ++i) {
        const IinRow& row = kIinRows[first + i];
        if (row.number != static_cast<uint64_t>(start) + i || !textIsNumber(row)) return false;
    }
    return true;
}
static_assert(groupIsGapFree(0, kFirstGroupSize, kFirstGroupStart));
static_assert(groupIsGapFree(kFirstGroupSize, kMainGroupSize, kMainGroupStart));

constexpr int32_t kIinDigits = 6;
constexpr int32_t kCodeLength = 2;


// Whether text (of the table's length) equals tableText once upper-cased.
bool equalsUpperCased(const char* text, size_t length, const char* tableText) {
    if (std::strlen(tableText) != length) return false;
    for (size_t i = 0; i < length; ++i) {
        if (toAsciiUpper(text[i]) != tableText[i]) return false;
    }
    return true;
}

bool isCodeSpan(TextSpan code) { return code.data != nullptr && code.length == kCodeLength; }

bool codeEquals(TextSpan code, const char* tableCode) {
    return code.data[0] == tableCode[0] && code.data[1] == tableCode[1];
}

// Reads the first six characters as strtol does (leading white space and a sign
// accepted, stopping at the first non-digit); what follows them is never looked at.
bool readIinNumber(TextSpan iin, int64_t* number) {
    if (iin.data == nullptr || iin.length < kIinDigits) return false;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    // Six digits, the usual case, read as one word: every byte 0x30 to 0x39, then the
    // digits paired and the pairs joined.
    uint64_t word = 0;
    std::memcpy(&word, iin.data, kIinDigits);
    constexpr uint64_t kHighNibbles = 0x0000F0F0F0F0F0F0ull;
    constexpr uint64_t kLowNibbles = 0x00000F0F0F0F0F0Full;
    if ((word & kHighNibbles) == 0x0000303030303030ull && (((word & kLowNibbles) + 0x0000060606060606ull) & kHighNibbles) == 0) {
        const uint64_t digits = word & kLowNibbles;
        const uint64_t pairs = digits * 10 + (digits >> 8);  // first digit of each pair in its low byte
        *number = static_cast<int64_t>((pairs & 0xFF) * 10000 + (pairs >> 16 & 0xFF) * 100 + (pairs >> 32 & 0xFF));
        return true;
    }
#endif
    *number = readLeadingInteger(TextSpan{iin.data, kIinDigits});
    return true;
}

const IinRow* iinRowForNumber(int64_t number) {
    if (number >= kFirstGroupStart && number < kFirstGroupStart + int64_t{kFirstGroupSize}) {
        return &kIinRows[number - kFirstGroupStart];
    }
    if (number >= kMainGroupStart && number < kMainGroupStart + int64_t{kMainGroupSize}) {
        return &kIinRows[kFirstGroupSize + static_cast<size_t>(number - kMainGroupStart)];
    }
    return nullptr;
}

// The lookups by text find their rows through indexes built at compile time: the first
// row of each two-letter code at the code's place among the 676 pairs of capitals, the
// first row of each country name and alpha-3 code in a hash table.

constexpr int32_t kNoRow = -1;

// The place of a pair of capitals, or -1.
constexpr int32_t codePlace(char first, char second) {
    if (first < 'A' || first > 'Z' || second < 'A' || second > 'Z') return -1;
    return (first - 'A') * 26 + (second - 'A');
}

struct CodeIndex {
    int16_t row[26 * 26];
};

template <typename Row, size_t N>
constexpr CodeIndex indexCodes(const Row (&rows)[N], size_t first, size_t count) {
    CodeIndex index{};
    for (int16_t& r : index.row) r = kNoRow;
    for (size_t i = first; i < first + count; ++i) {
        const int32_t place = codePlace(rows[i].code[0], rows[i].code[1]);
        if (place >= 0 && index.row[place] == kNoRow) index.row[place] = static_cast<int16_t>(i);
    }
    return index;
}

// A code of other bytes could never be found through the index.
template <typename Row, size_t N>
constexpr bool codesAreCapitals(const Row (&rows)[N]) {
    for (const Row& row : rows) {
        if (codePlace(row.code[0], row.code[1]) < 0 || row.code[2] != '\0') return false;
    }
    return true;
}
static_assert(codesAreCapitals(kJurisdictionRows) && codesAreCapitals(kIinRows));

constexpr CodeIndex kJurisdictionsByCode = indexCodes(kJurisdictionRows, 0, std::size(kJurisdictionRows));
constexpr CodeIndex kFirstGroupByCode = indexCodes(kIinRows, 0, kFirstGroupSize);
constexpr CodeIndex kMainGroupByCode = indexCodes(kIinRows, kFirstGroupSize, kMainGroupSize);

constexpr uint32_t kTextSlots = 1024;
struct TextIndex {
    int16_t row[kTextSlots];
};

// FNV-1a over the text as the table stands or, for a caller's text, upper-cased.
constexpr uint32_t textSlot(const char* text, size_t length, bool upperCase) {
    uint32_t h = 2166136261u;
    for (size_t i = 0; i < length; ++i) {
        h = (h ^ static_cast<unsigned char>(upperCase ? toAsciiUpper(text[i]) : text[i])) * 16777619u;
    }
    return h % kTextSlots;
}

constexpr size_t textLength(const char* text) {
    size_t n = 0;
    while (text[n] != '\0') ++n;
    return n;
}

constexpr bool sameText(const char* a, const char* b) {
    size_t i = 0;
    while (a[i] != '\0' && a[i] == b[i]) ++i;
    return a[i] == b[i];
}

// Each distinct text of the column at its slot, or the next free one; the first row wins.
constexpr TextIndex indexCountries(const char* CountryRow::*column) {
    TextIndex index{};
    for (int16_t& r : index.row) r = kNoRow;
    for (size_t i = 0; i < kCountryRowCount; ++i) {
        const char* text = kCountryRows[i].*column;
        uint32_t at = textSlot(text, textLength(text), false);
        while (index.row[at] != kNoRow && !sameText(kCountryRows[index.row[at]].*column, text)) at = (at + 1) % kTextSlots;
        if (index.row[at] == kNoRow) index.row[at] = static_cast<int16_t>(i);
    }
    return index;
}

constexpr TextIndex kCountriesByName = indexCountries(&CountryRow::name);
constexpr TextIndex kCountriesByAlpha3 = indexCountries(&CountryRow::alpha3);

// The first row whose column text equals the given text (upper-cased first when asked).
const CountryRow* findCountry(const TextIndex& index, const char* CountryRow::*column, const char* text, size_t length,
                              bool upperCase) {
    for (uint32_t at = textSlot(text, length, upperCase); index.row[at] != kNoRow; at = (at + 1) % kTextSlots) {
        const CountryRow& row = kCountryRows[index.row[at]];
        const char* tableText = row.*column;
        if (upperCase ? equalsUpperCased(text, length, tableText)
                      : std::strlen(tableText) == length && std::memcmp(text, tableText, length) == 0) {
            return &row;
        }
    }
    return nullptr;
}

const IinRow* iinRowForCode(const CodeIndex& index, TextSpan code) {
    const int32_t place = codePlace(code.data[0], code.data[1]);
    return place >= 0 && index.row[place] != kNoRow ? &kIinRows[index.row[place]] : nullptr;
}

const JurisdictionRow* jurisdictionRowForCode(TextSpan code) {
    if (!isCodeSpan(code)) return nullptr;
    const int32_t place = codePlace(code.data[0], code.data[1]);
    return place >= 0 && kJurisdictionsByCode.row[place] != kNoRow ? &kJurisdictionRows[kJurisdictionsByCode.row[place]]
                                                                      : nullptr;
}

}  // namespace

std::span<const CountryRow> countryRows() { return std::span(kCountryRows).first(kCountryRowCount); }
std::span<const IinRow> iinRows() { return kIinRows; }
std::span<const JurisdictionRow> jurisdictionRows() { return kJurisdictionRows; }

const char* countryNameForAlpha3(TextSpan code) {
    if (!spanUsable(code)) return nullptr;
    const CountryRow* row =
        findCountry(kCountriesByAlpha3, &CountryRow::alpha3, code.data, static_cast<size_t>(code.length), true);
    return row != nullptr ? row->name : nullptr;
}

const char* alpha3ForCountryName(const char* name) {
    if (name == nullptr || *name == '\0') return nullptr;
    const CountryRow* row = findCountry(kCountriesByName, &CountryRow::name, name, std::strlen(name), true);
    return row != nullptr ? row->alpha3 : nullptr;
}

int32_t isCountryAlpha3(const char* text) {
    if (text == nullptr) return 0;
    return findCountry(kCountriesByAlpha3, &CountryRow::alpha3, text, std::strlen(text), false) != nullptr ? 1 : 0;
}

const char* jurisdictionCodeForIin(TextSpan iin) {
    int64_t number = 0;
    if (!readIinNumber(iin, &number)) return nullptr;
    if (const IinRow* row = iinRowForNumber(number)) return row->code;
    if (number == kSecondAlbertaIin) return kAlbertaCode;
    return nullptr;
}

int32_t isKnownIin(TextSpan iin) {
    int64_t number = 0;
    if (!readIinNumber(iin, &number)) return 0;
    return iinRowForNumber(number) != nullptr || number == kSecondAlbertaIin ? 1 : 0;
}

const char* iinForJurisdictionCode(TextSpan code) {
    if (!isCodeSpan(code)) return nullptr;
    if (const IinRow* row = iinRowForCode(kMainGroupByCode, code)) return row->text;
    if (const IinRow* row = iinRowForCode(kFirstGroupByCode, code)) return row->text;
    // Deliberately kept though never reached: AB already stands in the first group.
    if (codeEquals(code, kAlbertaCode)) return kSecondAlbertaText;
    return nullptr;
}

const char* countryForJurisdictionCode(TextSpan code) {
    const JurisdictionRow* row = jurisdictionRowForCode(code);
    return row != nullptr ? row->countryName : nullptr;
}

namespace {

// The alpha-3 code of each jurisdiction row's country, as alpha3ForCountryName finds it
// for the name (or the name itself, should it be a code), worked out at compile time.
constexpr bool sameUpperCased(const char* text, const char* tableText) {
    size_t i = 0;
    while (text[i] != '\0' && toAsciiUpper(text[i]) == tableText[i]) ++i;
    return text[i] == '\0' && tableText[i] == '\0';
}

constexpr const char* alpha3OfCountryName(const char* name) {
    for (size_t i = 0; i < kCountryRowCount; ++i) {
        if (sameUpperCased(name, kCountryRows[i].name)) return kCountryRows[i].alpha3;
    }
    for (size_t i = 0; i < kCountryRowCount; ++i) {
        if (sameText(name, kCountryRows[i].alpha3)) return kCountryRows[i].alpha3;
    }
    return nullptr;
}

struct JurisdictionCountryCodes {
    const char* alpha3[std::size(kJurisdictionRows)];
};

constexpr JurisdictionCountryCodes findJurisdictionCountryCodes() {
    JurisdictionCountryCodes codes{};
    for (size_t i = 0; i < std::size(kJurisdictionRows); ++i) codes.alpha3[i] = alpha3OfCountryName(kJurisdictionRows[i].countryName);
    return codes;
}

constexpr JurisdictionCountryCodes kJurisdictionCountryCodes = findJurisdictionCountryCodes();

// The worker copies the country's name into 64 bytes before looking it up; every name
// fits, so the name looked up here is the one it looks up.
static_assert([] {
    for (const JurisdictionRow& row : kJurisdictionRows) {
        if (textLength(row.countryName) >= 64) return false;
    }
    return true;
}());

}  // namespace

const char* countryCodeOfJurisdiction(TextSpan code) {
    const JurisdictionRow* row = jurisdictionRowForCode(code);
    return row != nullptr ? kJurisdictionCountryCodes.alpha3[row - kJurisdictionRows] : nullptr;
}

}  // namespace orvane
