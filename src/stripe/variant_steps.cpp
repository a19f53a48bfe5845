#include "stripe/variant_steps.h"

#include <cstring>
#include <initializer_list>

#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kIinLength = 6;
constexpr int32_t kNumberFieldEnd = 19;  // IIN and a full 13-digit number field
constexpr int32_t kPostalFieldLength = 11;

// Trimmed digits at offset, stored when the track reaches that far.
void storeDigitsAt(ParsedRecord* record, FieldId id, TextSpan track, int32_t offset, int32_t length) {
    if (track.data == nullptr || track.length < offset + length) return;
    TextSpan value{track.data + offset, length};
    trimIf(&value, isWhiteSpace);
    if (value.length >= 1 && allChars(value, isAsciiDigit) == 0) {
        setField(record, id, value);
    }
}

int32_t lastIndexOf(TextSpan text, char c) {
    for (int32_t at = text.length - 1; at >= 0; --at) {
        if (text.data[at] == c) return at;
    }
    return -1;
}

// The bytes from index on.
TextSpan spanFrom(TextSpan text, int32_t index) { return TextSpan{text.data + index, text.length - index}; }

int isPostalCodeOrDash(int c) { return isPostalCodeChar(c) || c == '-'; }

bool isDashedZip(TextSpan code) {
    return code.length == 10 && code.data[5] == '-' && allDigits(code.data, 5) && allDigits(code.data + 6, 4);
}

// Letter, digit, letter, digit, letter, digit.
bool isCanadianPostalCode(TextSpan code) {
    if (code.length != 6) return false;
    for (int32_t i = 0; i < 6; ++i) {
        const unsigned char c = static_cast<unsigned char>(code.data[i]);
        if (i % 2 == 0 ? !isAsciiUpper(c) : !isAsciiDigit(c)) return false;
    }
    return true;
}

// DDMMYYYY.
void storeDayFirstDate(ParsedRecord* record, FieldId id, TextSpan text) {
    trimIf(&text, isWhiteSpace);
    if (text.length != 8 || !allDigits(text.data, 8)) return;
    storePlausibleDate(record, id, makeDate(readDigits(text.data + 4, 4), readDigits(text.data + 2, 2), readDigits(text.data, 2)));
}

// CCYYMMDD.
void storeYearFirstDate(ParsedRecord* record, FieldId id, const char* text) {
    storePlausibleDate(record, id, makeDate(readDigits(text, 4), readDigits(text + 4, 2), readDigits(text + 6, 2)));
}

constexpr int32_t kCanadianLocatedOffset = 9;  // sentinel, two versions, 6-byte postal code
constexpr int32_t kHashLocatedOffset = 12;     // sentinel, 11-byte postal code
constexpr int32_t kTrailingPostalOffset = 29;  // after the eye colour
constexpr int32_t kFixedLocatedOffset = 9;     // after the 9-digit postal code

constexpr TrackSlice kFixedCity{2, 13, field::city, nullptr};
constexpr TrackSlice kFixedName{15, 35, field::fullName, nullptr};
constexpr int32_t kFixedAddressOffset = 50;
constexpr int32_t kFixedAddressLength = 29;
constexpr TrackSlice kFixedIin{0, 6, field::iin, isAsciiDigit};
constexpr TrackSlice kFixedNumber{6, 9, field::licenseNumber, isAsciiDigit};
constexpr int32_t kFixedBirthOffset = 15;
constexpr int32_t kFixedExpiryOffset = 23;
constexpr TrackSlice kFixedClass{0, 2, field::licenseClassification, nullptr};
constexpr TrackSlice kFixedRestrictions{2, 4, field::restrictionCodeAlt, nullptr};
constexpr TrackSlice kFixedEndorsements{6, 4, field::endorsementsCodeAlt, nullptr};
constexpr TrackSlice kFixedSex{10, 1, field::gender, nullptr};
constexpr TrackSlice kFixedHeight{11, 3, field::height, isAsciiDigit};         // feet, then inches
constexpr TrackSlice kFixedWeight{14, 3, field::weightPounds, isAsciiDigit};   // pounds
constexpr TrackSlice kFixedHair{17, 3, field::hairColor, isAsciiAlpha};
constexpr TrackSlice kFixedEyes{20, 3, field::eyeColor, isAsciiAlpha};

}  // namespace

// Stripes read as one line with three sentinels write a ZIP+4 with its dash
// ("12345-6789") in track 3's postal field, where the default would stop at the dash.
int32_t postalCodeWithDash(StripeParser& p, TextSpan track) {
    TextSpan code;
    if (!searchPostalCode(track, isPostalCodeOrDash, &code)) return kOk;
    trimSet(&code, " ");
    if (isDashedZip(code)) {
        setField(p.record, field::postalCode, code);
    } else {
        storePostalCode(p.record, code);
    }
    return kOk;
}

// Canadian track 1 ends the address with the unit or second line after a "$": it is kept
// apart as address line 2 rather than run into the street.
int32_t canadianAddressStep(StripeParser& p, TextSpan track) {
    TextSpan address;
    if (!findTrack1Address(track, &address)) return kOk;
    const int32_t split = findByte(address, '$', 0);
    if (split < 0) {
        storeStripeAddress(p.record, field::address1, address);
        return kOk;
    }
    storeStripeAddress(p.record, field::address1, TextSpan{address.data, split});
    storeStripeAddress(p.record, field::address2, TextSpan{address.data + split + 1, address.length - split - 1});
    return kOk;
}

// Canadian track 3: sentinel, template and security versions, then the six characters of
// the postal code without padding (A1A1A1); the description follows at once.
int32_t canadianPostalCodeStep(StripeParser& p, TextSpan track) {
    if (track.length < kCanadianLocatedOffset || !isTrack3Sentinel(track.data[0])) return kOk;
    const TextSpan code{track.data + 3, 6};
    if (isCanadianPostalCode(code)) storePostalCode(p.record, code);
    return kOk;
}

int32_t canadianLocator(StripeParser&, TextSpan track, TextSpan* located) {
    if (located == nullptr) return kErrInvalidArgument;
    *located = TextSpan{track.data, 0};
    if (track.length > kCanadianLocatedOffset && isTrack3Sentinel(track.data[0])) {
        *located = TextSpan{track.data + kCanadianLocatedOffset, track.length - kCanadianLocatedOffset};
    }
    return kOk;
}

// Provinces write the height in centimetres and the weight in kilograms, whatever the
// digits: a 110 kg weight is no pound figure.
int32_t metricHeightStep(StripeParser& p, TextSpan located) {
    storeDigitsAt(p.record, field::heightCentimeters, located, 17, 3);
    return kOk;
}

int32_t metricWeightStep(StripeParser& p, TextSpan located) {
    storeDigitsAt(p.record, field::weightKilograms, located, 20, 3);
    return kOk;
}

// Track 3 after a "#" sentinel carries no template and security versions: the 11-byte
// postal code follows the sentinel at once and the description starts 12 bytes in.
int32_t hashLocator(StripeParser&, TextSpan track, TextSpan* located) {
    if (located == nullptr) return kErrInvalidArgument;
    *located = TextSpan{track.data, 0};
    if (track.length > kHashLocatedOffset && track.data[0] == '#') {
        *located = TextSpan{track.data + kHashLocatedOffset, track.length - kHashLocatedOffset};
    }
    return kOk;
}

int32_t hashPostalCodeStep(StripeParser& p, TextSpan track) {
    if (trackByte(track, 0) != '#') return kOk;
    const int32_t n = runLength(track, 1, isPostalCodeChar, kPostalFieldLength);
    if (n > 3) storePostalCode(p.record, TextSpan{track.data + 1, n});
    return kOk;
}

// The same layout writes 0 or 9 for a sex that was not recorded: only M, F, 1 and 2
// are stored.
int32_t recordedSexStep(StripeParser& p, TextSpan located) {
    const char sex = trackByte(located, 16);
    if (sex != '\0' && std::strchr("MF12", sex) != nullptr) {
        setField(p.record, field::gender, TextSpan{located.data + 16, 1});
    }
    return kOk;
}

// Rejoined stripes: the licence number begins on track 2 and ends on track 3, so its
// step reads track 2 together with the track 3 the splitter keeps right behind it.
int32_t rejoinedTrack2Driver(StripeParser& p, TextSpan track) {
    if (!spanUsable(track)) return kOk;
    TextSpan number = track;
    const TextSpan track3 = p.tracks.track3;
    if (spanUsable(track3) && track3.data > track.data) {
        number.length = static_cast<int32_t>(track3.data + track3.length - track.data);
    }
    runStep(p.issuerStep, p, track);
    runStep(p.licenseNumberStep, p, number);
    runStep(p.datesStep, p, track);
    return kOk;
}

// Licence numbers longer than track 2 holds: its number field is full (13 digits before
// "=") and the rest of the number, letters or digits, opens track 3 after its sentinel
// and two version bytes, blank-padded to 11 bytes where other layouts keep the postal
// code. The span is track 2 with track 3 behind it.
int32_t continuedLicenseNumberStep(StripeParser& p, TextSpan track) {
    if (track.length <= kNumberFieldEnd || !allDigits(track.data, kNumberFieldEnd) ||
        track.data[kNumberFieldEnd] != '=') {
        return kOk;
    }
    char number[kNumberFieldEnd - kIinLength + kPostalFieldLength] = {};
    int32_t length = kNumberFieldEnd - kIinLength;
    std::memcpy(number, track.data + kIinLength, static_cast<size_t>(length));
    const int32_t end2 = findByte(track, '?', kNumberFieldEnd);
    if (end2 >= 0 && isTrack3Sentinel(trackByte(track, end2 + 1))) {
        const int32_t start = end2 + 4;
        const int32_t rest = runLength(track, start, isAsciiAlnum, kPostalFieldLength);
        std::memcpy(number + length, track.data + start, static_cast<size_t>(rest));
        length += rest;
    }
    setField(p.record, field::licenseNumber, TextSpan{number, length});
    return kOk;
}

// With the licence number in the postal field, the postal code closes track 3: the
// 11 bytes after the eye colour.
int32_t trailingPostalCodeStep(StripeParser& p, TextSpan track) {
    TextSpan located{track.data, 0};
    stripeTrack3Locator(p, track, &located);
    const int32_t n = runLength(located, kTrailingPostalOffset, isPostalCodeChar, kPostalFieldLength);
    if (n > 3) storePostalCode(p.record, TextSpan{located.data + kTrailingPostalOffset, n});
    return kOk;
}

// Letter-prefixed licence numbers on a numeric track: the number field opens with two
// digits for the letter (01 for A to 26 for Z), then the digits of the number.
int32_t letterCodedLicenseNumberStep(StripeParser& p, TextSpan track) {
    if (track.data == nullptr || track.length < kIinLength || !allDigits(track.data, kIinLength)) return kOk;
    const int32_t equals = findByte(track, '=', kIinLength);
    const int32_t digits = equals - kIinLength;
    if (equals < 0 || digits < 3 || digits > 13 || !allDigits(track.data + kIinLength, digits)) return kOk;
    const int32_t letter = readDigits(track.data + kIinLength, 2);
    if (letter < 1 || letter > 26) return kOk;
    char number[13] = {};
    number[0] = static_cast<char>('A' + letter - 1);
    std::memcpy(number + 1, track.data + kIinLength + 2, static_cast<size_t>(digits - 2));
    setField(p.record, field::licenseNumber, TextSpan{number, digits - 1});
    return kOk;
}

// The data part of the same layout puts the birth date first: "=", CCYYMMDD, then the
// expiry YYMM with the usual codes (77 never expires, 88 and 99 follow the birth month).
int32_t birthFirstDatesStep(StripeParser& p, TextSpan track) {
    const int32_t equals = findByte(track, '=', 0);
    if (equals < 0 || track.length - equals < 13 || !allDigits(track.data + equals + 1, 12)) return kOk;
    const char* d = track.data + equals + 1;
    const DateValue birth = makeDate(readDigits(d, 4), readDigits(d + 4, 2), readDigits(d + 6, 2));
    storePlausibleDate(p.record, field::birthdate, birth);
    storeStripeExpiry(p, readDigits(d + 8, 2), readDigits(d + 10, 2), birth);
    return kOk;
}

// Its postal field holds digits only, right-aligned behind two zeros: the last nine of
// the 11 digits are the ZIP+4.
int32_t zeroFilledPostalCodeStep(StripeParser& p, TextSpan track) {
    if (track.length < 3 + kPostalFieldLength || !isTrack3Sentinel(track.data[0])) return kOk;
    const char* field = track.data + 3;
    if (field[0] != '0' || field[1] != '0' || !allDigits(field, kPostalFieldLength)) return kOk;
    storePostalCode(p.record, TextSpan{field + 2, 9});
    return kOk;
}

// Track-2-only readers on stripes whose number field is always full: the number stands
// right-aligned in its 13 digits behind leading zeros that are not part of it; the
// overflow digits after the dates follow it as usual.
int32_t zeroPaddedLicenseNumberStep(StripeParser& p, TextSpan track) {
    if (track.length <= kNumberFieldEnd || !allDigits(track.data, kNumberFieldEnd) ||
        track.data[kNumberFieldEnd] != '=') {
        return kOk;
    }
    int32_t start = kIinLength;
    while (start < kNumberFieldEnd - 1 && track.data[start] == '0') ++start;
    char number[18] = {};
    int32_t length = kNumberFieldEnd - start;
    std::memcpy(number, track.data + start, static_cast<size_t>(length));
    length += readOverflowDigits(track, kNumberFieldEnd, number + length);
    setField(p.record, field::licenseNumber, TextSpan{number, length});
    return kOk;
}

// The Australian track (after "%"): state ^ FAMILY$GIVEN NAMES ^ street$suburb$postcode
// ^ licence number ^ birth DDMMYYYY ^ expiry DDMMYYYY. The state is not stored: the
// jurisdiction table is North-American, where SA, WA or NT name other places.
void readAustralianTrack(StripeParser& p, TextSpan track) {
    TextSpan fields[6] = {};
    if (splitTokens(track, fields, 6, "^", 0) < 6) return;
    storeTrimmed(p.record, field::fullName, fields[1]);
    // The postcode after the last "$", the suburb after the one before.
    TextSpan address = fields[2];
    const int32_t postcodeMark = lastIndexOf(address, '$');
    if (postcodeMark >= 0) {
        storePostalCode(p.record, spanFrom(address, postcodeMark + 1));
        address.length = postcodeMark;
        const int32_t suburbMark = lastIndexOf(address, '$');
        if (suburbMark >= 0) {
            storeTrimmed(p.record, field::city, spanFrom(address, suburbMark + 1));
            address.length = suburbMark;
        }
    }
    storeStripeAddress(p.record, field::address1, address);
    storeTrimmed(p.record, field::licenseNumber, fields[3]);
    storeDayFirstDate(p.record, field::birthdate, fields[4]);
    storeDayFirstDate(p.record, field::expirationDate, fields[5]);
}

// Australian cards: the one track, then the country, which the check has established.
int32_t australianTrack1Driver(StripeParser& p, TextSpan track) {
    readAustralianTrack(p, track);
    setFieldLiteral(p.record, field::countryCode, "AUS");
    return kOk;
}

// Fixed-field stripes read track 3 only when the check measured one.
int32_t measuredTrack3Driver(StripeParser& p, TextSpan track) {
    return spanUsable(track) ? stripeTrack3Driver(p, track) : kOk;
}

// Fixed-field track 1 (after "%"): jurisdiction 2, city 13, name 35 (its parts joined by
// "$"), address 29, each padded with blanks.
int32_t fixedTrack1Driver(StripeParser& p, TextSpan track) {
    if (!spanUsable(track)) return kOk;
    runStep(p.jurisdictionStep, p, track);
    storeSlice(p.record, track, kFixedCity);
    storeSlice(p.record, track, kFixedName);
    if (track.length >= kFixedAddressOffset + kFixedAddressLength) {
        TextSpan address{track.data + kFixedAddressOffset, kFixedAddressLength};
        trimIf(&address, isWhiteSpace);  // the padding
        storeStripeAddress(p.record, field::address1, address);
    }
    return kOk;
}

// Fixed-field track 2 (after ";"), 31 digits: IIN 6, licence number 9, birth date
// CCYYMMDD, then expiry CCYYMMDD with its full year.
int32_t fixedIssuerStep(StripeParser& p, TextSpan track) { return sliceStep<kFixedIin>(p, track); }
int32_t fixedLicenseNumberStep(StripeParser& p, TextSpan track) { return sliceStep<kFixedNumber>(p, track); }

int32_t fixedDatesStep(StripeParser& p, TextSpan track) {
    if (track.data == nullptr || track.length < kFixedExpiryOffset + 8 || !allDigits(track.data, kFixedExpiryOffset + 8)) {
        return kOk;
    }
    storeYearFirstDate(p.record, field::birthdate, track.data + kFixedBirthOffset);
    storeYearFirstDate(p.record, field::expirationDate, track.data + kFixedExpiryOffset);
    return kOk;
}

// Fixed-field track 3 (after its sentinel), 32 bytes: ZIP+4 9, class 2, restrictions 4,
// endorsements 4, sex 1, height 3 (feet, then inches), weight 3 (pounds), hair 3, eyes 3.
int32_t fixedPostalCodeStep(StripeParser& p, TextSpan track) {
    if (track.data != nullptr && track.length >= 9 && allDigits(track.data, 9)) {
        storePostalCode(p.record, TextSpan{track.data, 9});
    }
    return kOk;
}

int32_t fixedLocator(StripeParser&, TextSpan track, TextSpan* located) {
    if (located == nullptr) return kErrInvalidArgument;
    *located = TextSpan{track.data, 0};
    if (track.length > kFixedLocatedOffset) {
        *located = TextSpan{track.data + kFixedLocatedOffset, track.length - kFixedLocatedOffset};
    }
    return kOk;
}

int32_t fixedClassStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedClass>(p, located); }
int32_t fixedRestrictionsStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedRestrictions>(p, located); }
int32_t fixedEndorsementsStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedEndorsements>(p, located); }
int32_t fixedSexStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedSex>(p, located); }
int32_t fixedHeightStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedHeight>(p, located); }
int32_t fixedWeightStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedWeight>(p, located); }
int32_t fixedHairColorStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedHair>(p, located); }
int32_t fixedEyeColorStep(StripeParser& p, TextSpan located) { return sliceStep<kFixedEyes>(p, located); }

}  // namespace orvane
