// The exported getters and checks: each one names the worker that answers it.
#include "api/answers.h"
#include "fields/codes.h"

using namespace orvane;

extern "C" {

SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAamvaVersion); }

}  // extern "C"
