/* Parses one scanned input and prints what was read: the format, a few fields, whether
 * the check digits hold, and the whole result as one JSON object.
 *
 *   cc read_document.c $(pkg-config --cflags --libs orvane_parser) -o read_document
 *   ./read_document scan.txt
 */
#include <orvane_parser.h>

#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    FILE* in = fopen(argv[1], "rb");
    if (in == NULL) {
        perror(argv[1]);
        return 2;
    }
    static unsigned char bytes[65536];
    const int length = (int)fread(bytes, 1, sizeof bytes, in);
    fclose(in);

    SVT_ParserHandle* parser = SVT_create();
    if (parser == NULL) return 2;
    /* Text from a keyboard wedge or an app may be damaged; the lenient parse repairs it. */
    int status = SVT_parseLenient(parser, bytes, length);
    if (status != SVT_OK) {
        printf("not recognised (status %d)\n", status);
        SVT_delete(parser);
        return 1;
    }

    int group, format;
    char name[128], text[128];
    SVT_getFormat(parser, &group, &format);
    SVT_getFormatName(parser, name, sizeof name);
    printf("format %d/%d: %s\n", group, format, name);
    if (SVT_getLastName(parser, text, sizeof text) == SVT_OK) printf("last name: %s\n", text);
    if (SVT_getBirthdate(parser, text, sizeof text) == SVT_OK) printf("born: %s\n", text);

    int digits;
    if (SVT_validateCheckDigits(parser, &digits) == SVT_OK) {
        if (digits == SVT_CHECK_VALID) {
            puts("check digits: all hold");
        } else if (digits == SVT_CHECK_INVALID && SVT_getCheckDigitFailures(parser, text, sizeof text) == SVT_OK) {
            printf("check digits: %s fail\n", text);
        } else {
            puts("check digits: none on this document");
        }
    }

    /* A first call with a small buffer tells the length the object needs. */
    int needed = 0;
    char probe[1];
    SVT_getResultJson(parser, probe, sizeof probe, &needed);
    char* json = malloc((size_t)needed + 1);
    if (json != NULL && SVT_getResultJson(parser, json, needed + 1, &needed) == SVT_OK) puts(json);
    free(json);
    SVT_delete(parser);
    return 0;
}
