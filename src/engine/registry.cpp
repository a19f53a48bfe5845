#include "engine/registry.h"

#include <iterator>

#include "aamva/variants.h"
#include "documents/cac.h"
#include "documents/hc.h"
#include "documents/mrz.h"
#include "documents/national.h"
#include "documents/national_zones.h"
#include "documents/zone_dates.h"
#include "engine/framers.h"
#include "stripe/variants.h"

namespace orvane {
namespace {

// The order is part of the behaviour: of two rows with the same score the earlier one
// wins, so rows stay in this order even where it is not the order of format numbers.
constexpr FormatDescriptor kFormatRegistry[] = {
    // group, format, framer, reader, expected country, expected jurisdiction, quick check,
    // whether the reader rewrites its text, and when it reads as an earlier row
    {kGroupStripe, 0, frameBarcodeText, parseStripeFormat0, nullptr, nullptr, mayReadStripeFormat0, kReadsOnly},
    {kGroupStripe, 1, frameBarcodeText, parseStripeFormat1, nullptr, nullptr, mayReadStripeFormat1, kReadsOnly},
    {kGroupStripe, 2, frameBarcodeText, parseStripeFormat2, nullptr, nullptr, mayReadStripeFormat2, kReadsOnly},
    {kGroupStripe, 4, frameBarcodeText, parseStripeFormat4, nullptr, nullptr, mayReadStripeFormat4, kReadsOnly},
    {kGroupStripe, 5, frameBarcodeText, parseStripeFormat5, nullptr, nullptr, mayReadStripeFormat5, kReadsOnly},
    {kGroupStripe, 6, frameBarcodeText, parseStripeFormat6, nullptr, nullptr, mayReadStripeFormat6, kReadsOnly},
    {kGroupStripe, 9, frameBarcodeText, parseStripeFormat9, nullptr, nullptr, mayReadStripeFormat9, kReadsOnly},
    {kGroupStripe, 11, frameBarcodeText, parseStripeFormat11, nullptr, nullptr, mayReadStripeFormat11, kWritesText},
    {kGroupStripe, 3, frameBarcodeText, parseStripeFormat3, nullptr, nullptr, mayReadStripeFormat3, kReadsOnly},
    {kGroupStripe, 7, frameBarcodeText, parseStripeFormat7, nullptr, nullptr, mayReadStripeFormat7, kReadsOnly},
    {kGroupStripe, 8, frameBarcodeText, parseStripeFormat8, "CAN", nullptr, mayReadStripeFormat8, kReadsOnly},
    {kGroupStripe, 10, frameBarcodeText, parseStripeFormat10, nullptr, nullptr, mayReadStripeFormat10, kReadsOnly},
    {kGroupStripe, 12, frameBarcodeText, parseStripeFormat12, nullptr, nullptr, mayReadStripeFormat12, kReadsOnly},
    {kGroupStripe, 13, frameBarcodeText, parseStripeFormat13, nullptr, nullptr, mayReadStripeFormat13, kReadsOnly},
    {kGroupStripe, 14, frameBarcodeText, parseStripeFormat14, nullptr, nullptr, mayReadStripeFormat14, kReadsOnly},
    {kGroupStripe, 15, frameBarcodeText, parseStripeFormat15, "AUS", nullptr, mayReadStripeFormat15, kReadsOnly},
    {kGroupStripe, 16, frameBarcodeText, parseStripeFormat16, nullptr, nullptr, mayReadStripeFormat16, kReadsOnly},
    {kGroupAamva, 40, frameBarcodeText, parseAamvaFormat40, nullptr, nullptr, mayReadAamvaFormat40, kReadsOnly},
    {kGroupAamva, 17, frameBarcodeText, parseAamvaFormat17, nullptr, nullptr, mayReadAamvaFormat17, kReadsOnly},
    {kGroupAamva, 18, frameBarcodeText, parseAamvaFormat18, nullptr, nullptr, mayReadAamvaFormat18, kReadsOnly},
    {kGroupAamva, 19, frameBarcodeText, parseAamvaFormat19, nullptr, nullptr, mayReadAamvaFormat19, kReadsOnly},
    {kGroupAamva, 20, frameBarcodeText, parseAamvaFormat20, nullptr, nullptr, mayReadAamvaFormat20, kReadsOnly},
    {kGroupAamva, 21, frameBarcodeText, parseAamvaFormat21, nullptr, nullptr, mayReadAamvaFormat21, kReadsOnly},
    {kGroupAamva, 22, frameBarcodeText, parseAamvaFormat22, nullptr, "NC", mayReadAamvaFormat22, kReadsOnly},
    {kGroupAamva, 23, frameBarcodeText, parseAamvaFormat23, nullptr, "NC", mayReadAamvaFormat23, kReadsOnly},
    {kGroupAamva, 24, frameBarcodeText, parseAamvaFormat24, nullptr, nullptr, mayReadAamvaFormat24, kReadsOnly},
    {kGroupAamva, 25, frameBarcodeText, parseAamvaFormat25, nullptr, "AR", mayReadAamvaFormat25, kReadsOnly},
    {kGroupAamva, 26, frameBarcodeText, parseAamvaFormat26, nullptr, nullptr, mayReadAamvaFormat26, kReadsOnly},
    {kGroupAamva, 27, frameBarcodeText, parseAamvaFormat27, "CAN", nullptr, mayReadAamvaFormat27, kReadsOnly},
    {kGroupAamva, 28, framePassThrough, parseAamvaFormat28, "CAN", "AB", mayReadAamvaFormat28, kReadsOnly},
    {kGroupAamva, 29, frameBarcodeText, parseAamvaFormat29, nullptr, nullptr, mayReadAamvaFormat29, kReadsOnly},
    {kGroupAamva, 30, frameBarcodeText, parseAamvaFormat30, nullptr, nullptr, mayReadAamvaFormat30, kReadsOnly},
    {kGroupAamva, 31, frameBarcodeText, parseAamvaFormat31, nullptr, nullptr, mayReadAamvaFormat31, kReadsOnly},
    {kGroupAamva, 32, frameBarcodeText, parseAamvaFormat32, nullptr, nullptr, mayReadAamvaFormat32, kReadsOnly},
    {kGroupAamva, 33, frameBarcodeText, parseAamvaFormat33, "CAN", "AB", mayReadAamvaFormat33, kReadsOnly},
    {kGroupAamva, 34, framePassThrough, parseAamvaFormat34, "CAN", "AB", mayReadAamvaFormat34, kReadsOnly},
    {kGroupAamva, 35, frameBarcodeTextStrict, parseAamvaFormat35, "CAN", "AB", mayReadAamvaFormat35, kReadsOnly},
    {kGroupAamva, 45, frameBarcodeText, parseAamvaFormat45, "CAN", nullptr, mayReadAamvaFormat45, kReadsOnly},
    {kGroupAamva, 36, frameBarcodeText, parseAamvaFormat36, nullptr, "SL", mayReadAamvaFormat36, kReadsOnly},
    {kGroupAamva, 37, frameBarcodeText, parseAamvaFormat37, nullptr, nullptr, mayReadAamvaFormat37, kReadsOnly},
    {kGroupAamva, 38, frameBarcodeText, parseAamvaFormat38, nullptr, nullptr, mayReadAamvaFormat38, kReadsOnly},
    {kGroupAamva, 39, frameBarcodeText, parseAamvaFormat39, nullptr, nullptr, mayReadAamvaFormat39, kReadsOnly},
    {kGroupAamva, 41, frameBarcodeText, parseAamvaFormat41, nullptr, nullptr, mayReadAamvaFormat41, kReadsOnly},
    {kGroupAamva, 42, frameBarcodeText, parseAamvaFormat42, nullptr, nullptr, mayReadAamvaFormat42, kReadsOnly},
    {kGroupAamva, 43, frameBarcodeText, parseAamvaFormat43, nullptr, nullptr, mayReadAamvaFormat43, kReadsOnly},
    {kGroupAamva, 44, frameBarcodeText, parseAamvaFormat44, nullptr, nullptr, mayReadAamvaFormat44, kReadsOnly},
    {kGroupAamva, 46, frameBarcodeText, parseAamvaFormat46, nullptr, nullptr, mayReadAamvaFormat46, kReadsOnly,
     format46ReadsAsFormat42},
    {kGroupAamva, 47, frameBarcodeText, parseAamvaFormat47, "CAN", "AB", mayReadAamvaFormat47, kReadsOnly},
    {kGroupRegional, 48, framePassThrough, parseHcFormat48, nullptr, nullptr, mayReadHcFormat48, kReadsOnly},
    {kGroupRegional, 49, frameBarcodeText, parseHcFormat49, nullptr, nullptr, mayReadHcFormat49, kReadsOnly},
    {kGroupRegional, 50, frameBarcodeText, parseHcFormat50, nullptr, nullptr, mayReadHcFormat50, kReadsOnly},
    {kGroupCommonAccessCard, 51, frameBarcodeText, parseCacFormat51, nullptr, nullptr, mayReadCacFormat51, kReadsOnly},
    {kGroupCommonAccessCard, 52, frameBarcodeText, parseCacFormat52, nullptr, nullptr, mayReadCacFormat52, kReadsOnly},
    {kGroupCommonAccessCard, 54, frameBarcodeText, parseCacFormat54, nullptr, nullptr, mayReadCacFormat54, kReadsOnly},
    {kGroupCommonAccessCard, 53, frameBarcodeText, parseCacFormat53, nullptr, nullptr, mayReadCacFormat53, kReadsOnly},
    {kGroupCommonAccessCard, 55, frameBarcodeText, parseCacFormat55, nullptr, nullptr, mayReadCacFormat55, kReadsOnly},
    {kGroupNational, 56, framePassThrough, parseGuatemalaLicence, "GTM", nullptr, mayReadGuatemalaLicence, kWritesText},
    {kGroupNational, 57, framePassThrough, parsePuertoRicoLicence, "PRI", nullptr, mayReadPuertoRicoLicence, kWritesText},
    {kGroupNational, 58, framePassThrough, parsePanamaLicence, "PAN", nullptr, mayReadPanamaLicence, kReadsOnly},
    {kGroupNational, 59, framePassThrough, parseSouthAfricaIdentity, "ZAF", nullptr, mayReadSouthAfricaIdentity, kReadsOnly},
    {kGroupNational, 60, framePassThrough, parseMexicoElements, "MEX", nullptr, mayReadMexicoElements, kWritesText},
    {kGroupNational, 61, frameLatin1, parseMexicoLatin1Text, "MEX", nullptr, mayReadMexicoLatin1Text, kReadsOnly},
    {kGroupNational, 62, framePassThrough, parseVirginIslandsLicence, nullptr, nullptr, mayReadVirginIslandsLicence, kReadsOnly},
    {kGroupNational, 63, framePassThrough, parseVirginIslandsLicenceDtt, nullptr, nullptr, mayReadVirginIslandsLicence, kReadsOnly},
    {kGroupMrz, 64, frameMrz, parseMrzFormat64, nullptr, nullptr, mayReadMrzFormat64, kReadsOnly},
    {kGroupMrz, 65, frameMrz, parseMrzFormat65, nullptr, nullptr, mayReadMrzFormat65, kReadsOnly},
    {kGroupMrz, 66, frameMrz, parseMrzFormat66, nullptr, nullptr, mayReadMrzFormat66, kReadsOnly},
    {kGroupMrz, 67, frameMrz, parseMrzFormat67, nullptr, nullptr, mayReadMrzFormat67, kReadsOnly},
    // Only the lenient parse tries the rows from here on.
    {kGroupMrz, 100, frameMrz, parseFrenchIdentityCardZone, nullptr, nullptr, mayReadFrenchIdentityCardZone, kReadsOnly},
    {kGroupMrz, 101, frameMrz, parseSwissDrivingLicenceZone, nullptr, nullptr, mayReadSwissDrivingLicenceZone, kReadsOnly},
    {kGroupMrz, 102, frameMrz, parseFrenchDrivingLicenceZone, nullptr, nullptr, mayReadFrenchDrivingLicenceZone, kReadsOnly},
    {kGroupMrz, 103, frameMrz, parsePassportZoneUnknownDates, nullptr, nullptr, mayReadPassportZoneUnknownDates, kWritesText},
    {kGroupMrz, 104, frameMrz, parseCardZoneUnknownDates, nullptr, nullptr, mayReadCardZoneUnknownDates, kWritesText},
    {kGroupMrz, 105, frameMrz, parseTwoLineCardZoneUnknownDates, nullptr, nullptr, mayReadTwoLineCardZoneUnknownDates, kWritesText},
    {kGroupMrz, 106, frameMrz, parseVisaZoneUnknownDates, nullptr, nullptr, mayReadVisaZoneUnknownDates, kWritesText},
};

// One row per format; a dropped or doubled row fails the build.
constexpr size_t kStrictRows = 68;
constexpr size_t kLenientOnlyRows = 7;
static_assert(std::size(kFormatRegistry) == kStrictRows + kLenientOnlyRows);

}  // namespace

std::span<const FormatDescriptor> formatRegistry() {
    return std::span<const FormatDescriptor>(kFormatRegistry).first(kStrictRows);
}

std::span<const FormatDescriptor> lenientRegistry() { return kFormatRegistry; }

std::span<const FormatDescriptor> lenientOnlyRows() {
    return std::span<const FormatDescriptor>(kFormatRegistry).subspan(kStrictRows);
}

}  // namespace orvane
