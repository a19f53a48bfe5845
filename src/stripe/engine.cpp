#include "stripe/engine.h"

#include <cstring>

#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kWhiteSpace = " \t\n\v\f\r";
constexpr const char* kCityEdges = "-.'/\\ \t$^?";
constexpr const char* kAddressEdges = "_-'\\/'";

constexpr int32_t kLongestCity = 13;
constexpr int32_t kLongestName = 35;
constexpr int32_t kLongestAddress = 255;
constexpr int32_t kLongestPostalCode = 11;
constexpr int32_t kIinLength = 6;
constexpr int32_t kLongestNumberField = 13;
constexpr int32_t kLongestOverflow = 5;
constexpr int32_t kDateDigits = 12;
constexpr int32_t kUnbounded = 0x7fffffff;

// Expiry codes of track 2 that are not months.
constexpr int32_t kNeverExpires = 77;
constexpr int32_t kMonthAfterBirth = 88;
constexpr int32_t kBirthMonth = 99;

// Bytes 14 on from a track 3 sentinel: template and security versions, 11 of postal code.
constexpr int32_t kLocatedOffset = 14;

bool lettersAt(TextSpan track, int32_t at, int32_t n) {
    return at >= 0 && at + n <= track.length && runLength(track, at, isAsciiAlpha, n) == n;
}

// Two letters, then 1-13 city bytes.
bool matchCityAt(TextSpan track, int32_t at, TextSpan* city) {
    if (!lettersAt(track, at, 2)) return false;
    const int32_t n = runLength(track, at + 2, isStripeCityChar, kLongestCity);
    if (n < 1) return false;
    *city = TextSpan{track.data + at + 2, n};
    return true;
}

// The name and address patterns below start with a run of city bytes ended by "^".
// Every start inside one run sees the same end and so the same fields after it, so
// each run is walked once and its earliest fitting start stands for the rest: a search
// that tried every start would find the same first match.
int isCityByte(char c) { return isStripeCityChar(static_cast<unsigned char>(c)); }

// The next run of city bytes from index at, [start, end); at moves past it. False when
// the track has no more bytes.
struct CityRun {
    int32_t start;
    int32_t end;
};

bool nextCityRun(TextSpan track, int32_t* at, CityRun* run) {
    int32_t i = *at;
    if (i >= track.length) return false;
    while (i < track.length && !isCityByte(track.data[i])) ++i;
    run->start = i;
    while (i < track.length && isCityByte(track.data[i])) ++i;
    run->end = i;
    *at = i;
    return true;
}

// 2-15 city bytes, "^", then 1-35 name bytes: the first such name of the track.
bool findTrack1Name(TextSpan track, TextSpan* name) {
    if (!spanUsable(track)) return false;
    CityRun run{};
    for (int32_t at = 0; nextCityRun(track, &at, &run);) {
        const int32_t runStart = run.start;
        const int32_t end = run.end;
        // The first start sees at most 15 city bytes; starts are tried while 3 bytes remain.
        const int32_t first = end - 15 > runStart ? end - 15 : runStart;
        if (end - runStart < 2 || trackByte(track, end) != '^' || track.length - first < 3) continue;
        const int32_t n = runLength(track, end + 1, isStripeNameChar, kLongestName);
        if (n < 1) continue;
        *name = TextSpan{track.data + end + 1, n};
        return true;
    }
    return false;
}

// 2 letters, 2-13 city bytes, "^", 1-35 name bytes, "^", then 1-255 address bytes: the
// first such address of the track. The letters open the run of city bytes.
bool findAddress(TextSpan track, TextSpan* address) {
    if (!spanUsable(track)) return false;
    CityRun run{};
    for (int32_t at = 0; nextCityRun(track, &at, &run);) {
        const int32_t runStart = run.start;
        const int32_t end = run.end;
        if (trackByte(track, end) != '^') continue;
        // Starts that leave 2 to 13 city bytes after two letters; tried while 5 bytes remain.
        int32_t start = end - 15 > runStart ? end - 15 : runStart;
        while (start <= end - 4 && !lettersAt(track, start, 2)) ++start;
        if (start > end - 4 || track.length - start < 5) continue;
        const int32_t nameStart = end + 1;
        const int32_t name = runLength(track, nameStart, isStripeNameChar, kUnbounded);
        const int32_t addressStart = nameStart + name + 1;
        if (name < 1 || name > kLongestName || trackByte(track, addressStart - 1) != '^') continue;
        const int32_t n = runLength(track, addressStart, isStripeAddressChar, kLongestAddress);
        if (n < 1) continue;
        *address = TextSpan{track.data + addressStart, n};
        return true;
    }
    return false;
}

// Tries the pattern at every start while minimum bytes remain.
bool searchTrack(TextSpan track, int32_t minimum, bool (*match)(TextSpan, int32_t, TextSpan*), TextSpan* found) {
    if (!spanUsable(track)) return false;
    for (int32_t at = 0; track.length - at >= minimum; ++at) {
        if (match(track, at, found)) return true;
    }
    return false;
}

// An address is trimmed of its replace class and of the punctuation that ends a line.
struct AddressEdges {
    bool edge[256];
};
constexpr AddressEdges makeAddressEdges() {
    AddressEdges e{};
    for (const char* p = kStripeAddressReplaceChars; *p != '\0'; ++p) e.edge[static_cast<unsigned char>(*p)] = true;
    for (const char* p = kAddressEdges; *p != '\0'; ++p) e.edge[static_cast<unsigned char>(*p)] = true;
    return e;
}
constexpr AddressEdges kAddressEdgeBytes = makeAddressEdges();
int isAddressEdge(int c) { return c >= 0 && c < 256 && kAddressEdgeBytes.edge[c]; }

}  // namespace

char trackByte(TextSpan track, int32_t index) {
    if (track.data == nullptr || index < 0 || index >= track.length) return '\0';
    return track.data[index];
}

bool trackStartsWith(TextSpan track, const char* prefix) {
    const int32_t n = static_cast<int32_t>(std::strlen(prefix));
    return track.data != nullptr && track.length >= n && std::memcmp(track.data, prefix, static_cast<size_t>(n)) == 0;
}

bool isPaymentCardTrack(TextSpan track) {
    return trackStartsWith(track, "%B") && isAsciiDigit(static_cast<unsigned char>(trackByte(track, 2)));
}

bool isLicenceTrack1(TextSpan track) {
    return track.length >= 3 && trackByte(track, 0) == '%' && lettersAt(track, 1, 2);
}

void dropLeading(TextSpan* track, int32_t n) { spanSkip(track, n); }

bool isTrack3Sentinel(char c) { return c == '+' || c == '%' || c == '#'; }

int32_t readDigits(const char* text, int32_t n) {
    int32_t value = 0;
    for (int32_t i = 0; i < n; ++i) value = value * 10 + (text[i] - '0');
    return value;
}

int32_t findByte(TextSpan track, char c, int32_t from) {
    if (track.data == nullptr) return -1;
    const int32_t start = from < 0 ? 0 : from;
    if (start >= track.length) return -1;
    const int32_t at = start + findEitherByte(track.data + start, track.length - start, c, c);
    return at < track.length ? at : -1;
}

DateValue makeDate(int32_t year, int32_t month, int32_t day) { return DateValue{year, month, day, 0, 0, 0}; }

int32_t dayWithinMonth(int32_t year, int32_t month, int32_t day) {
    const int32_t last = daysInMonth(year, month);
    return day < last ? day : last;
}

void storePlausibleDate(ParsedRecord* record, FieldId id, const DateValue& date) {
    if (isPlausibleDate(date)) setFieldDate(record, id, &date);
}

int32_t expandTwoDigitYear(const ParseClock* clock, int32_t yy) {
    if (clock == nullptr) return -1;
    return clock->parseYear / 100 * 100 + yy;
}

void storeStripeExpiry(StripeParser& p, int32_t yy, int32_t mm, const DateValue& birth) {
    if (mm == kNeverExpires) {
        setFieldLiteral(p.record, field::expirationDate, "99991231");
        return;
    }
    const int32_t year = expandTwoDigitYear(p.context, yy);
    if (year < 0) return;
    DateValue expiry = makeDate(0, 0, 0);
    if (mm >= 1 && mm <= 12) {
        expiry = makeDate(year, mm, dayWithinMonth(year, mm, birth.day));
    } else if (mm == kMonthAfterBirth) {
        expiry = birth.month == 12 ? makeDate(year + 1, 1, 1) : makeDate(year, birth.month + 1, 1);
    } else if (mm == kBirthMonth) {
        expiry = makeDate(year, birth.month, dayWithinMonth(year, birth.month, birth.day));
    }
    storePlausibleDate(p.record, field::expirationDate, expiry);
}

void storePostalCode(ParsedRecord* record, TextSpan code) {
    trimSet(&code, " ");
    char formatted[kLongestPostalCode + 2] = {};
    if (code.length == 6) {
        // Canadian: "A1A 1A1".
        std::memcpy(formatted, code.data, 3);
        formatted[3] = ' ';
        std::memcpy(formatted + 4, code.data + 3, 3);
        code = TextSpan{formatted, 7};
    } else if (code.length == 9) {
        // ZIP+4: "12345-6789".
        std::memcpy(formatted, code.data, 5);
        formatted[5] = '-';
        std::memcpy(formatted + 6, code.data + 5, 4);
        code = TextSpan{formatted, 10};
    }
    setField(record, field::postalCode, code);
}

int isPostalCodeChar(int c) { return isAsciiUpper(c) || isAsciiDigit(c) || c == ' '; }

bool searchPostalCode(TextSpan track, CharTest accept, TextSpan* code) {
    if (track.data == nullptr || track.length < 7) return false;
    for (int32_t at = track.length - 7; at >= 0; --at) {
        // The next sentinel down, "+", "#" or "%".
        const int32_t plusOrHash = findLastEitherByte(track.data, at + 1, '+', '#');
        const int32_t percent = findLastEitherByte(track.data, at + 1, '%', '%');
        at = plusOrHash > percent ? plusOrHash : percent;
        if (at < 0) return false;
        const int32_t n = runLength(track, at + 3, accept, kLongestPostalCode);
        if (n <= 3) continue;
        *code = TextSpan{track.data + at + 3, n};
        return true;
    }
    return false;
}

int32_t readOverflowDigits(TextSpan track, int32_t equals, char* out) {
    if (track.length - equals - 1 <= kDateDigits + 1) return 0;
    const int32_t start = equals + kDateDigits + 1;
    const int32_t n = runLength(track, start, isAsciiDigit, kLongestOverflow);
    std::memcpy(out, track.data + start, static_cast<size_t>(n));
    return n;
}

void storeTrimmed(ParsedRecord* record, FieldId id, TextSpan value) {
    trimIf(&value, isWhiteSpace);
    setField(record, id, value);
}

bool findTrack1Address(TextSpan track, TextSpan* address) { return findAddress(track, address); }

void storeStripeAddress(ParsedRecord* record, FieldId id, TextSpan address) {
    trimIf(&address, isAddressEdge);
    setFieldFromSpan(record, id, address, kStripeAddressReplaceChars, kWhiteSpace, ' ');
}

void storeSlice(ParsedRecord* record, TextSpan track, const TrackSlice& slice) {
    if (track.data == nullptr || track.length < slice.offset + slice.length) return;
    TextSpan value{track.data + slice.offset, slice.length};
    if (slice.accept != nullptr && allChars(value, slice.accept) != 0) return;
    storeTrimmed(record, slice.id, value);
}

int32_t stripeMainStep(StripeParser& p, const char* payload, int32_t length) {
    if (payload == nullptr || length < 0) return kErrInvalidArgument;
    p.tracks = TrackSet{};
    if (int32_t status = runStep(p.trackSplitter, p, payload, length, &p.tracks)) return status;
    if (int32_t status = runStep(p.trackCheck, p, &p.tracks)) return status;
    runStep(p.track1Driver, p, p.tracks.track1);
    runStep(p.track2Driver, p, p.tracks.track2);
    runStep(p.track3Driver, p, p.tracks.track3);
    defaultToLicence(p.record);
    return kOk;
}

int32_t stripeTrack1Driver(StripeParser& p, TextSpan track) {
    if (!spanUsable(track)) return kOk;
    runStep(p.jurisdictionStep, p, track);
    runStep(p.cityStep, p, track);
    runStep(p.nameStep, p, track);
    runStep(p.addressStep, p, track);
    return kOk;
}

int32_t stripeJurisdictionStep(StripeParser& p, TextSpan track) {
    if (lettersAt(track, 0, 2)) setField(p.record, field::jurisdictionCode, TextSpan{track.data, 2});
    return kOk;
}

int32_t stripeCityStep(StripeParser& p, TextSpan track) {
    TextSpan city;
    if (!searchTrack(track, 3, matchCityAt, &city)) return kOk;
    trimSet(&city, kCityEdges);
    setFieldFromSpan(p.record, field::city, city, kStripeCityReplaceChars, kWhiteSpace, ' ');
    return kOk;
}

int32_t stripeNameStep(StripeParser& p, TextSpan track) {
    TextSpan name;
    if (findTrack1Name(track, &name)) storeTrimmed(p.record, field::fullName, name);
    return kOk;
}

int32_t stripeAddressStep(StripeParser& p, TextSpan track) {
    TextSpan address;
    if (findTrack1Address(track, &address)) storeStripeAddress(p.record, field::address1, address);
    return kOk;
}

int32_t stripeTrack2Driver(StripeParser& p, TextSpan track) {
    if (!spanUsable(track)) return kOk;
    runStep(p.issuerStep, p, track);
    runStep(p.licenseNumberStep, p, track);
    runStep(p.datesStep, p, track);
    return kOk;
}

int32_t stripeIssuerStep(StripeParser& p, TextSpan track) {
    if (track.data == nullptr || track.length <= 7) return kOk;
    const int32_t equals = findByte(track, '=', 0);
    const int32_t account = equals >= 0 ? equals : track.length;
    if (account >= 7 && account <= 19 && allDigits(track.data, account)) {
        setField(p.record, field::iin, TextSpan{track.data, kIinLength});
    }
    return kOk;
}

int32_t stripeLicenseNumberStep(StripeParser& p, TextSpan track) {
    if (track.data == nullptr || track.length <= 19 || !allDigits(track.data, kIinLength)) return kOk;
    const int32_t digits = runLength(track, kIinLength, isAsciiDigit, kLongestNumberField);
    const int32_t equals = kIinLength + digits;
    if (trackByte(track, equals) != '=') return kOk;
    char number[kLongestNumberField + kLongestOverflow] = {};
    std::memcpy(number, track.data + kIinLength, static_cast<size_t>(digits));
    const int32_t length = digits + readOverflowDigits(track, equals, number + digits);
    setField(p.record, field::licenseNumber, TextSpan{number, length});
    return kOk;
}

int32_t stripeDatesStep(StripeParser& p, TextSpan track) {
    if (track.data == nullptr || track.length < 8) return kOk;
    const int32_t equals = findByte(track, '=', 0);
    if (equals < 0 || track.length - equals < kDateDigits + 1) return kOk;
    const char* d = track.data + equals + 1;
    if (!allDigits(d, kDateDigits)) return kOk;
    const int32_t expiryMonth = readDigits(d + 2, 2);
    DateValue birth = makeDate(readDigits(d + 4, 4), readDigits(d + 8, 2), readDigits(d + 10, 2));
    // Deliberately takes the expiry month as birth month when only the latter is impossible.
    if (birth.month > 12 && expiryMonth <= 12) birth.month = expiryMonth;
    storePlausibleDate(p.record, field::birthdate, birth);
    storeStripeExpiry(p, readDigits(d, 2), expiryMonth, birth);
    return kOk;
}

int32_t stripeTrack3Driver(StripeParser& p, TextSpan track) {
    if (p.track3Locator != nullptr) {
        TextSpan located{track.data, 0};
        p.track3Locator(p, track, &located);
        runStep(p.classStep, p, located);
        runStep(p.restrictionsStep, p, located);
        runStep(p.endorsementsStep, p, located);
        runStep(p.sexStep, p, located);
        runStep(p.heightStep, p, located);
        runStep(p.weightStep, p, located);
        runStep(p.hairColorStep, p, located);
        runStep(p.eyeColorStep, p, located);
    }
    runStep(p.postalCodeStep, p, track);
    return kOk;
}

int32_t stripePostalCodeStep(StripeParser& p, TextSpan track) {
    TextSpan code;
    if (searchPostalCode(track, isPostalCodeChar, &code)) storePostalCode(p.record, code);
    return kOk;
}

int32_t stripeTrack3Locator(StripeParser&, TextSpan track, TextSpan* located) {
    if (located == nullptr) return kErrInvalidArgument;
    *located = TextSpan{track.data, 0};
    if (track.data == nullptr || track.length < 16) return kOk;
    for (int32_t at = track.length - 15; at >= 0; --at) {
        if (isTrack3Sentinel(track.data[at])) {
            *located = TextSpan{track.data + at + kLocatedOffset, track.length - at - kLocatedOffset};
            return kOk;
        }
    }
    return kOk;
}

namespace {
constexpr TrackSlice kClassSlice{0, 2, field::licenseClassification, nullptr};
constexpr TrackSlice kRestrictionsSlice{2, 10, field::restrictionCodeAlt, nullptr};
constexpr TrackSlice kEndorsementsSlice{12, 4, field::endorsementsCodeAlt, nullptr};
constexpr TrackSlice kSexSlice{16, 1, field::gender, nullptr};
constexpr TrackSlice kHairSlice{23, 3, field::hairColor, isAsciiAlpha};
constexpr TrackSlice kEyeSlice{26, 3, field::eyeColor, isAsciiAlpha};
}  // namespace

int32_t stripeClassStep(StripeParser& p, TextSpan located) { return sliceStep<kClassSlice>(p, located); }
int32_t stripeRestrictionsStep(StripeParser& p, TextSpan located) { return sliceStep<kRestrictionsSlice>(p, located); }
int32_t stripeEndorsementsStep(StripeParser& p, TextSpan located) { return sliceStep<kEndorsementsSlice>(p, located); }
int32_t stripeSexStep(StripeParser& p, TextSpan located) { return sliceStep<kSexSlice>(p, located); }
int32_t stripeHairColorStep(StripeParser& p, TextSpan located) { return sliceStep<kHairSlice>(p, located); }
int32_t stripeEyeColorStep(StripeParser& p, TextSpan located) { return sliceStep<kEyeSlice>(p, located); }

int32_t stripeHeightStep(StripeParser& p, TextSpan located) {
    if (located.data == nullptr || located.length <= 19) return kOk;
    TextSpan height{located.data + 17, 3};
    trimIf(&height, isWhiteSpace);
    if (height.length < 1 || allChars(height, isAsciiDigit) != 0) return kOk;
    // A first digit of 1 or 2 is centimetres; feet and inches start from 3.
    const bool centimetres = height.data[0] == '1' || height.data[0] == '2';
    setField(p.record, centimetres ? field::heightCentimeters : field::height, height);
    return kOk;
}

int32_t stripeWeightStep(StripeParser& p, TextSpan located) {
    if (located.data == nullptr || located.length <= 22) return kOk;
    const char* w = located.data + 20;
    const unsigned char first = static_cast<unsigned char>(w[0]);
    if (!(isAsciiDigit(first) || isWhiteSpace(first)) || !allDigits(w + 1, 2)) return kOk;
    TextSpan weight{w, 3};
    trimIf(&weight, isWhiteSpace);
    // Up to 100 is kilograms; more is pounds.
    const bool kilograms = readDigits(weight.data, weight.length) < 101;
    setField(p.record, kilograms ? field::weightKilograms : field::weightPounds, weight);
    return kOk;
}

void initStripeParser(StripeParser& p, ParsedRecord* record, const ParseClock* context) {
    std::memset(&p, 0, sizeof p);
    p.record = record;
    p.context = context;
    p.mainStep = stripeMainStep;
    p.track1Driver = stripeTrack1Driver;
    p.jurisdictionStep = stripeJurisdictionStep;
    p.cityStep = stripeCityStep;
    p.nameStep = stripeNameStep;
    p.addressStep = stripeAddressStep;
    p.track2Driver = stripeTrack2Driver;
    p.issuerStep = stripeIssuerStep;
    p.licenseNumberStep = stripeLicenseNumberStep;
    p.datesStep = stripeDatesStep;
    p.track3Driver = stripeTrack3Driver;
    p.postalCodeStep = stripePostalCodeStep;
    p.track3Locator = stripeTrack3Locator;
    p.classStep = stripeClassStep;
    p.restrictionsStep = stripeRestrictionsStep;
    p.endorsementsStep = stripeEndorsementsStep;
    p.sexStep = stripeSexStep;
    p.heightStep = stripeHeightStep;
    p.weightStep = stripeWeightStep;
    p.hairColorStep = stripeHairColorStep;
    p.eyeColorStep = stripeEyeColorStep;
}

int32_t runStripeParser(StripeParser& p, const char* payload, int32_t length) {
    return runStep(p.mainStep, p, payload, length);
}

}  // namespace orvane
