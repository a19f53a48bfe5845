// Framers: each makes a normalised copy of the caller's bytes for the format readers
// of its registry rows. They read the input only and write into out.
#pragma once

#include <cstdint>

namespace orvane {

// The first min(inputLength, outCapacity) bytes unchanged, without terminator.
int32_t framePassThrough(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                         int32_t* outLength);
// As framePassThrough, with Latin-1 letters and signs folded to ASCII.
int32_t frameLatin1(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                    int32_t* outLength);
// Keeps the machine-readable-zone characters (letters upper-cased, digits, "<").
int32_t frameMrz(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                 int32_t* outLength);
// Undoes what scanners and keyboard wedges do to barcode text: escaped line breaks,
// mangled AAMVA headers, stray control bytes. Always succeeds.
int32_t frameBarcodeText(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                         int32_t* outLength);
// frameBarcodeText, then every byte outside 0x20..0x7A except LF, CR and RS is a space.
int32_t frameBarcodeTextStrict(const char* input, int32_t inputLength, char* out,
                               int32_t outCapacity, int32_t* outLength);

}  // namespace orvane
