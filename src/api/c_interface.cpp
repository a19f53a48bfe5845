// The exported getters and checks: each one names the worker that answers it.
#include "api/answers.h"
#include "fields/codes.h"
#include "fields/countries.h"

using namespace orvane;

extern "C" {

SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAamvaVersion); }
SVT_API int SVT_getJurisdictionCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getJurisdictionCode); }
SVT_API int SVT_getCountry(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountry); }
SVT_API int SVT_getCountryCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountryCode); }
SVT_API int SVT_getIIN(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIIN); }
SVT_API int SVT_getIssuedBy(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIssuedBy); }

}  // extern "C"
