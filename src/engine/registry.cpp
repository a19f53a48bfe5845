#include "engine/registry.h"

#include <iterator>

#include "aamva/variants.h"
#include "documents/cac.h"
#include "documents/hc.h"
#include "documents/mrz.h"
#include "documents/national.h"
#include "engine/framers.h"
#include "stripe/variants.h"

namespace orvane {
namespace {

// The order is part of the behaviour: of two rows with the same score the earlier one
// wins, so rows stay in this order even where it is not the order of format numbers.
constexpr FormatDescriptor kFormatRegistry[] = {
    // group, format, framer, reader, expected country, expected jurisdiction
    {kGroupStripe, 0, frameBarcodeText, parseStripeFormat0, nullptr, nullptr},
    {kGroupStripe, 1, frameBarcodeText, parseStripeFormat1, nullptr, nullptr},
    {kGroupStripe, 2, frameBarcodeText, parseStripeFormat2, nullptr, nullptr},
    {kGroupStripe, 4, frameBarcodeText, parseStripeFormat4, nullptr, nullptr},
    {kGroupStripe, 5, frameBarcodeText, parseStripeFormat5, nullptr, nullptr},
    {kGroupStripe, 6, frameBarcodeText, parseStripeFormat6, nullptr, nullptr},
    {kGroupStripe, 9, frameBarcodeText, parseStripeFormat9, nullptr, nullptr},
    {kGroupStripe, 11, frameBarcodeText, parseStripeFormat11, nullptr, nullptr},
    {kGroupStripe, 3, frameBarcodeText, parseStripeFormat3, nullptr, nullptr},
    {kGroupStripe, 7, frameBarcodeText, parseStripeFormat7, nullptr, nullptr},
    {kGroupStripe, 8, frameBarcodeText, parseStripeFormat8, "CAN", nullptr},
    {kGroupStripe, 10, frameBarcodeText, parseStripeFormat10, nullptr, nullptr},
    {kGroupStripe, 12, frameBarcodeText, parseStripeFormat12, nullptr, nullptr},
    {kGroupStripe, 13, frameBarcodeText, parseStripeFormat13, nullptr, nullptr},
    {kGroupStripe, 14, frameBarcodeText, parseStripeFormat14, nullptr, nullptr},
    {kGroupStripe, 15, frameBarcodeText, parseStripeFormat15, "AUS", nullptr},
    {kGroupStripe, 16, frameBarcodeText, parseStripeFormat16, nullptr, nullptr},
    {kGroupAamva, 40, frameBarcodeText, parseAamvaFormat40, nullptr, nullptr},
    {kGroupAamva, 17, frameBarcodeText, parseAamvaFormat17, nullptr, nullptr},
    {kGroupAamva, 18, frameBarcodeText, parseAamvaFormat18, nullptr, nullptr},
    {kGroupAamva, 19, frameBarcodeText, parseAamvaFormat19, nullptr, nullptr},
    {kGroupAamva, 20, frameBarcodeText, parseAamvaFormat20, nullptr, nullptr},
    {kGroupAamva, 21, frameBarcodeText, parseAamvaFormat21, nullptr, nullptr},
    {kGroupAamva, 22, frameBarcodeText, parseAamvaFormat22, nullptr, "NC"},
    {kGroupAamva, 23, frameBarcodeText, parseAamvaFormat23, nullptr, "NC"},
    {kGroupAamva, 24, frameBarcodeText, parseAamvaFormat24, nullptr, nullptr},
    {kGroupAamva, 25, frameBarcodeText, parseAamvaFormat25, nullptr, "AR"},
    {kGroupAamva, 26, frameBarcodeText, parseAamvaFormat26, nullptr, nullptr},
    {kGroupAamva, 27, frameBarcodeText, parseAamvaFormat27, "CAN", nullptr},
    {kGroupAamva, 28, framePassThrough, parseAamvaFormat28, "CAN", "AB"},
    {kGroupAamva, 29, frameBarcodeText, parseAamvaFormat29, nullptr, nullptr},
    {kGroupAamva, 30, frameBarcodeText, parseAamvaFormat30, nullptr, nullptr},
    {kGroupAamva, 31, frameBarcodeText, parseAamvaFormat31, nullptr, nullptr},
    {kGroupAamva, 32, frameBarcodeText, parseAamvaFormat32, nullptr, nullptr},
    {kGroupAamva, 33, frameBarcodeText, parseAamvaFormat33, "CAN", "AB"},
    {kGroupAamva, 34, framePassThrough, parseAamvaFormat34, "CAN", "AB"},
    {kGroupAamva, 35, frameBarcodeTextStrict, parseAamvaFormat35, "CAN", "AB"},
    {kGroupAamva, 45, frameBarcodeText, parseAamvaFormat45, "CAN", nullptr},
    {kGroupAamva, 36, frameBarcodeText, parseAamvaFormat36, nullptr, "SL"},
    {kGroupAamva, 37, frameBarcodeText, parseAamvaFormat37, nullptr, nullptr},
    {kGroupAamva, 38, frameBarcodeText, parseAamvaFormat38, nullptr, nullptr},
    {kGroupAamva, 39, frameBarcodeText, parseAamvaFormat39, nullptr, nullptr},
    {kGroupAamva, 41, frameBarcodeText, parseAamvaFormat41, nullptr, nullptr},
    {kGroupAamva, 42, frameBarcodeText, parseAamvaFormat42, nullptr, nullptr},
    {kGroupAamva, 43, frameBarcodeText, parseAamvaFormat43, nullptr, nullptr},
    {kGroupAamva, 44, frameBarcodeText, parseAamvaFormat44, nullptr, nullptr},
    {kGroupAamva, 46, frameBarcodeText, parseAamvaFormat46, nullptr, nullptr},
    {kGroupAamva, 47, frameBarcodeText, parseAamvaFormat47, "CAN", "AB"},
    {kGroupRegional, 48, framePassThrough, parseHcFormat48, nullptr, nullptr},
    {kGroupRegional, 49, frameBarcodeText, parseHcFormat49, nullptr, nullptr},
    {kGroupRegional, 50, frameBarcodeText, parseHcFormat50, nullptr, nullptr},
    {kGroupCommonAccessCard, 51, frameBarcodeText, parseCacFormat51, nullptr, nullptr},
    {kGroupCommonAccessCard, 52, frameBarcodeText, parseCacFormat52, nullptr, nullptr},
    {kGroupCommonAccessCard, 54, frameBarcodeText, parseCacFormat54, nullptr, nullptr},
    {kGroupCommonAccessCard, 53, frameBarcodeText, parseCacFormat53, nullptr, nullptr},
    {kGroupCommonAccessCard, 55, frameBarcodeText, parseCacFormat55, nullptr, nullptr},
    {kGroupNational, 56, framePassThrough, parseGuatemalaLicence, "GTM", nullptr},
    {kGroupNational, 57, framePassThrough, parsePuertoRicoLicence, "PRI", nullptr},
    {kGroupNational, 58, framePassThrough, parsePanamaLicence, "PAN", nullptr},
    {kGroupNational, 59, framePassThrough, parseSouthAfricaIdentity, "ZAF", nullptr},
    {kGroupNational, 60, framePassThrough, parseMexicoElements, "MEX", nullptr},
    {kGroupNational, 61, frameLatin1, parseMexicoLatin1Text, "MEX", nullptr},
    {kGroupNational, 62, framePassThrough, parseVirginIslandsLicence, nullptr, nullptr},
    {kGroupNational, 63, framePassThrough, parseVirginIslandsLicenceDtt, nullptr, nullptr},
    {kGroupMrz, 64, frameMrz, parseMrzFormat64, nullptr, nullptr},
    {kGroupMrz, 65, frameMrz, parseMrzFormat65, nullptr, nullptr},
    {kGroupMrz, 66, frameMrz, parseMrzFormat66, nullptr, nullptr},
    {kGroupMrz, 67, frameMrz, parseMrzFormat67, nullptr, nullptr},
};

// One row per format; a dropped or doubled row fails the build.
static_assert(std::size(kFormatRegistry) == 68);

}  // namespace

std::span<const FormatDescriptor> formatRegistry() { return kFormatRegistry; }

}  // namespace orvane
