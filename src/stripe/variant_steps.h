// The steps that stripe formats put in place of the engine's defaults, each for one
// layout that the defaults would read wrongly. Every step keeps its slot's signature
// and role and writes through the field store.
#pragma once

#include <cstdint>

#include "stripe/engine.h"

namespace orvane {

// Format 4: a postal code that keeps the dash of its ZIP+4.
int32_t postalCodeWithDash(StripeParser& p, TextSpan track);

// Format 8, Canadian provinces.
int32_t canadianAddressStep(StripeParser& p, TextSpan track);
int32_t canadianPostalCodeStep(StripeParser& p, TextSpan track);
int32_t canadianLocator(StripeParser& p, TextSpan track, TextSpan* located);
int32_t metricHeightStep(StripeParser& p, TextSpan located);
int32_t metricWeightStep(StripeParser& p, TextSpan located);

// Format 9, track 3 from a "#" sentinel without version bytes.
int32_t hashLocator(StripeParser& p, TextSpan track, TextSpan* located);
int32_t hashPostalCodeStep(StripeParser& p, TextSpan track);
int32_t recordedSexStep(StripeParser& p, TextSpan located);

// Format 11, licence numbers continued on track 3 and the postal code at its end.
int32_t rejoinedTrack2Driver(StripeParser& p, TextSpan track);
int32_t continuedLicenseNumberStep(StripeParser& p, TextSpan track);
int32_t trailingPostalCodeStep(StripeParser& p, TextSpan track);

// Format 13, two-track stripes with letter-coded numbers and the birth date first.
int32_t letterCodedLicenseNumberStep(StripeParser& p, TextSpan track);
int32_t birthFirstDatesStep(StripeParser& p, TextSpan track);
int32_t zeroFilledPostalCodeStep(StripeParser& p, TextSpan track);

// Format 14, number fields filled with leading zeros.
int32_t zeroPaddedLicenseNumberStep(StripeParser& p, TextSpan track);

// Format 15, the Australian single track.
int32_t australianTrack1Driver(StripeParser& p, TextSpan track);

// Format 16, the fixed-field layout.
int32_t measuredTrack3Driver(StripeParser& p, TextSpan track);
int32_t fixedTrack1Driver(StripeParser& p, TextSpan track);
int32_t fixedIssuerStep(StripeParser& p, TextSpan track);
int32_t fixedLicenseNumberStep(StripeParser& p, TextSpan track);
int32_t fixedDatesStep(StripeParser& p, TextSpan track);
int32_t fixedPostalCodeStep(StripeParser& p, TextSpan track);
int32_t fixedLocator(StripeParser& p, TextSpan track, TextSpan* located);
int32_t fixedClassStep(StripeParser& p, TextSpan located);
int32_t fixedRestrictionsStep(StripeParser& p, TextSpan located);
int32_t fixedEndorsementsStep(StripeParser& p, TextSpan located);
int32_t fixedSexStep(StripeParser& p, TextSpan located);
int32_t fixedHeightStep(StripeParser& p, TextSpan located);
int32_t fixedWeightStep(StripeParser& p, TextSpan located);
int32_t fixedHairColorStep(StripeParser& p, TextSpan located);
int32_t fixedEyeColorStep(StripeParser& p, TextSpan located);

}  // namespace orvane
