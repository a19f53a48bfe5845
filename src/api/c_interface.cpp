// The exported getters and checks: each one names the worker that answers it.
#include "api/answers.h"
#include "fields/codes.h"
#include "fields/dates.h"
#include "fields/physical.h"

using namespace orvane;

extern "C" {

SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAamvaVersion); }

// Dates.
SVT_API int SVT_getExpirationDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getExpirationDate); }
SVT_API int SVT_getBirthdate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getBirthdate); }
SVT_API int SVT_getIssueDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIssueDate); }
SVT_API int SVT_getCardRevisionDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCardRevisionDate); }
SVT_API int SVT_getHAZMATExpDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHAZMATExpDate); }

// Physical description.
SVT_API int SVT_getGender(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getGender); }
SVT_API int SVT_getEyeColor(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getEyeColor); }
SVT_API int SVT_getHairColor(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHairColor); }
SVT_API int SVT_getRace(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getRace); }
SVT_API int SVT_getHeight(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHeight); }
SVT_API int SVT_getWeightKG(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getWeightKG); }
SVT_API int SVT_getWeightLBS(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getWeightLBS); }

}  // extern "C"
