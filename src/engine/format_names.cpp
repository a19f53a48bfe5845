#include "engine/format_names.h"

#include <iterator>

#include "engine/status.h"

namespace orvane {
namespace {

constexpr FormatName kFormatNames[] = {
    {0, "Magnetic stripe, tracks 1 and 2 from one sentinel", nullptr},
    {1, "Magnetic stripe, two tracks on two lines", nullptr},
    {2, "Magnetic stripe, three quoted lines", nullptr},
    {3, "Magnetic stripe, three quoted lines, track 3 first", nullptr},
    {4, "Magnetic stripe, three tracks", nullptr},
    {5, "Magnetic stripe, three tracks, two bytes before the issuer number", nullptr},
    {6, "Magnetic stripe, wrapped tracks", nullptr},
    {7, "Magnetic stripe, tracks ended by their sentinels", nullptr},
    {8, "Magnetic stripe, Canadian province", nullptr},
    {9, "Magnetic stripe, three tracks, track 3 after \"#\"", nullptr},
    {10, "Magnetic stripe, track 1 only", nullptr},
    {11, "Magnetic stripe, licence number continued on track 3", nullptr},
    {12, "Magnetic stripe, three quoted token lines", nullptr},
    {13, "Magnetic stripe, tracks 2 and 3", nullptr},
    {14, "Magnetic stripe, track 2 only", nullptr},
    {15, "Magnetic stripe, Australian licence", nullptr},
    {16, "Magnetic stripe, fixed-width tracks", nullptr},
    {17, "AAMVA DL/ID 2000 (version 01)", nullptr},
    {18, "AAMVA DL/ID 2000 (version 01), directory offsets one ahead", nullptr},
    {19, "AAMVA DL/ID 2000 (version 01), directory aligned to its digits", nullptr},
    {20, "Non-standard AAMVA36 barcode (version 00)", nullptr},
    {21, "Non-standard AAMVA36 barcode with record separator (version 00)", nullptr},
    {22, "Non-standard AAMVA36 barcode, North Carolina (version 00)", nullptr},
    {23, "Non-standard AAMVA barcode, North Carolina", nullptr},
    {24, "AAMVA DL/ID 2000 (version 01), \"AAMVA\" header", nullptr},
    {25, "Non-standard AAMVA barcode, Arkansas (version 01)", nullptr},
    {26, "Partial AAMVA DL/ID 2000 (version 01), three-digit directory", nullptr},
    {27, "AAMVA DL/ID 2003 elements (version 01), Canada", nullptr},
    {28, "AAMVA DL/ID 2005 elements (version 01), Alberta", nullptr},
    {29, "AAMVA DL/ID 2003 (version 02)", nullptr},
    {30, "AAMVA DL/ID 2003 (version 02), short header", nullptr},
    {31, "AAMVA DL/ID 2005 (version 03)", nullptr},
    {32, "AAMVA DL/ID 2005 (version 03), directory offsets one ahead", nullptr},
    {33, "AAMVA DL/ID 2005 (version 03), Alberta", nullptr},
    {34, "AAMVA DL/ID 2005 (version 03), Alberta, unframed", nullptr},
    {35, "AAMVA DL/ID 2005 elements, Alberta, CR LF lines", ", Alberta, CR LF lines"},
    {36, "AAMVA DL/ID 2005 (version 03), \"SL\" directory", nullptr},
    {37, "AAMVA DL/ID 2009 (version 04)", nullptr},
    {38, "AAMVA DL/ID 2009 (version 04), element separator only", nullptr},
    {39, "AAMVA DL/ID 2010 (version 05)", nullptr},
    {40, "AAMVA DL/ID 2010 (version 05), short header", nullptr},
    {41, "AAMVA DL/ID 2011 (version 06)", nullptr},
    {42, "AAMVA DL/ID 2012 or later (version 07 on)", ""},
    {43, "AAMVA DL/ID 2012 or 2013 (version 07 or 08), short header", ", short header"},
    {44, "AAMVA DL/ID 2012 or 2013 (version 07 or 08)", ""},
    {45, "AAMVA DL/ID 2012 or later, Canada, line-feed header", ", Canada, line-feed header"},
    {46, "AAMVA DL/ID 2012 or later (version 07 on), loose entry count", ", loose entry count"},
    {47, "AAMVA DL/ID, Alberta, own directory (version 12)", nullptr},
    {48, "HC card, fixed positions", nullptr},
    {49, "HC card, card tracks", nullptr},
    {50, "HC card, keyword lines", nullptr},
    {51, "Common Access Card 1", nullptr},
    {52, "Common Access Card N", nullptr},
    {53, "Common Access Card v3 (IDUS, layout 0)", nullptr},
    {54, "Common Access Card v3 (IDUS, layout 1)", nullptr},
    {55, "Uniformed Services civilian ID card (IDCV)", nullptr},
    {56, "Guatemalan driving licence", nullptr},
    {57, "Puerto Rican driving licence", nullptr},
    {58, "Panamanian driving licence", nullptr},
    {59, "South African identity document", nullptr},
    {60, "Mexican driving licence, element lines", nullptr},
    {61, "Mexican driving licence, Latin-1 text", nullptr},
    {62, "US Virgin Islands driving licence", nullptr},
    {63, "US Virgin Islands driving licence, first name under DTT", nullptr},
    {64, "Passport zone (TD3)", nullptr},
    {65, "Identity card zone (TD1)", nullptr},
    {66, "Identity card zone (TD2)", nullptr},
    {67, "Visa zone (MRV-A or MRV-B)", nullptr},
    {100, "French identity card zone (two lines of 36, issued until 2021)", nullptr},
    {101, "Swiss driving licence zone (lines of 9, 30 and 30)", nullptr},
    {102, "French driving licence zone (one line of 30)", nullptr},
    // An unknown birth day or month is answered as the latest day it can be.
    {103, "Passport zone (TD3), dates not known in full", nullptr},
    {104, "Identity card zone (TD1), dates not known in full", nullptr},
    {105, "Identity card zone (TD2), dates not known in full", nullptr},
    {106, "Visa zone (MRV-A or MRV-B), dates not known in full", nullptr},
};
static_assert(std::size(kFormatNames) == 75);

// The edition that first used each header version, from version 01.
constexpr const char* kEditions[] = {"2000", "2003", "2005", "2009", "2010", "2011", "2012", "2013", "2016", "2020"};

int32_t appendText(char* buffer, int32_t room, int32_t at, const char* text) {
    for (; *text != '\0' && at < room; ++text) buffer[at++] = *text;
    return at;
}

// A version the header may truly hold; a misread header gives others, and then the
// row's own name stands.
constexpr int32_t kLatestVersion = 19;

bool isPlausibleVersion(TextSpan version) {
    if (version.length != 2 || version.data[0] < '0' || version.data[0] > '9' || version.data[1] < '0' ||
        version.data[1] > '9') {
        return false;
    }
    const int32_t number = (version.data[0] - '0') * 10 + (version.data[1] - '0');
    return number <= kLatestVersion;
}

// "AAMVA DL/ID 2013 (version 08)" and the row's own words, from the version read.
int32_t writeEdition(const FormatName& row, TextSpan version, char* buffer, int32_t room) {
    const char digits[3] = {version.data[0], version.data[1], '\0'};
    const int32_t number = (digits[0] - '0') * 10 + (digits[1] - '0');
    int32_t at = appendText(buffer, room, 0, "AAMVA DL/ID ");
    if (number >= 1 && number <= static_cast<int32_t>(std::size(kEditions))) {
        at = appendText(buffer, room, at, kEditions[number - 1]);
        at = appendText(buffer, room, at, " ");
    }
    at = appendText(buffer, room, at, "(version ");
    at = appendText(buffer, room, at, digits);
    at = appendText(buffer, room, at, ")");
    return appendText(buffer, room, at, row.edition);
}

}  // namespace

std::span<const FormatName> formatNames() { return kFormatNames; }

const FormatName* findFormatName(uint32_t formatId) {
    if (formatId < std::size(kFormatNames) && kFormatNames[formatId].formatId == formatId) return &kFormatNames[formatId];
    for (const FormatName& row : kFormatNames) {
        if (row.formatId == formatId) return &row;
    }
    return nullptr;
}

int32_t answerFormatName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (record == nullptr || buffer == nullptr || capacity < 1 || record->workBuffer == nullptr) return kErrInvalidArgument;
    const FormatName* row = findFormatName(record->formatId);
    if (record->formatId == kNoFormatId || row == nullptr) return kErrNoAnswer;
    TextSpan version;
    int32_t length = 0;
    if (row->edition != nullptr && readField(record, field::aamvaVersion, &version) == kOk && isPlausibleVersion(version)) {
        length = writeEdition(*row, version, buffer, capacity - 1);
    } else {
        length = appendText(buffer, capacity - 1, 0, row->name);
    }
    buffer[length] = '\0';
    return length > 0 ? kOk : kErrNoAnswer;
}

}  // namespace orvane
