/* Compiled as strict C99 with warnings as errors: the public header must stay valid C. */
#include <stdio.h>
#include <string.h>

#include "orvane_parser.h"

int main(void) {
    SVT_ParserHandle* handle = SVT_create();
    char buffer[16];
    const char input[] = "not a document";
    int status;
    if (handle == NULL) return 1;
    if (SVT_getAamvaVersion(handle, buffer, (int)sizeof buffer) != SVT_ERR_INVALID_ARGUMENT) return 2;
    status = SVT_parse(handle, input, (int)strlen(input));
    if (status >= 0) return 3;
    if (SVT_getMajorVersion() != 1 || SVT_getMinorVersion() != 26 || SVT_getBuildVersion() != 0) return 4;
    SVT_delete(handle);
    SVT_delete(NULL);
    puts("c99 smoke test passed");
    return 0;
}
