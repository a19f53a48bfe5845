/* Parses a sample and prints its first name: proof that the installed tree is usable. */
#include <stdio.h>

#include <orvane_parser.h>

int main(int argc, char** argv) {
    static unsigned char input[65536];
    FILE* in = argc > 1 ? fopen(argv[1], "rb") : NULL;
    size_t length;
    char name[64];
    SVT_ParserHandle* parser;
    if (in == NULL) return 2;
    length = fread(input, 1, sizeof input, in);
    fclose(in);
    parser = SVT_create();
    if (SVT_parse(parser, input, (int)length) != SVT_OK || SVT_getFirstName(parser, name, sizeof name) != SVT_OK) {
        SVT_delete(parser);
        return 1;
    }
    printf("%s\n", name);
    SVT_delete(parser);
    return 0;
}
