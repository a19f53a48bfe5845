// The exported getters and checks: each one names the worker that answers it.
#include "api/answers.h"
#include "fields/codes.h"
#include "fields/countries.h"
#include "fields/names.h"

using namespace orvane;

extern "C" {

SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAamvaVersion); }
SVT_API int SVT_getFirstName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getFirstName); }
SVT_API int SVT_getMiddleName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getMiddleName); }
SVT_API int SVT_getLastName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getLastName); }
SVT_API int SVT_getNameSuffix(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getNameSuffix); }
SVT_API int SVT_getNamePrefix(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getNamePrefix); }
SVT_API int SVT_getFullName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getFullName); }
SVT_API int SVT_getJurisdictionCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getJurisdictionCode); }
SVT_API int SVT_getCountry(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountry); }
SVT_API int SVT_getCountryCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountryCode); }
SVT_API int SVT_getIIN(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIIN); }
SVT_API int SVT_getIssuedBy(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIssuedBy); }

}  // extern "C"
