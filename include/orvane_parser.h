/*
 * orvane_parser.h - turn the text read from an identity document into named fields.
 *
 * Create a handle, hand it one scanned input at a time with SVT_parse, then ask for
 * fields. Every function returns an int status: 0 on success, a negative code below
 * otherwise. Text answers are NUL-terminated and cut to capacity - 1 characters; the
 * capacity counts the terminator. Answers stay valid until the next SVT_parse or
 * SVT_delete on the same handle. One handle must not be used by two threads at once.
 */
#ifndef ORVANE_PARSER_H
#define ORVANE_PARSER_H

#if defined(__GNUC__) || defined(__clang__)
#define SVT_API __attribute__((visibility("default")))
#else
#define SVT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Opaque parser handle: owns the parsed record and its buffers. */
typedef struct SVT_ParserHandle SVT_ParserHandle;

/* Statuses returned by the functions below. */
enum {
    SVT_OK = 0,
    SVT_ERR_NULL_INPUT = -11,       /* input data pointer is null */
    SVT_ERR_NONE_FILLED = -16,      /* none of the listed fields is filled */
    SVT_ERR_EMPTY_INPUT = -17,      /* input length below 1 */
    SVT_ERR_BUFFER_TOO_SMALL = -18, /* answer buffer too small for a fixed-size answer */
    SVT_ERR_INVALID_ARGUMENT = -21, /* null pointer, capacity below 1, negative length, or no parse done yet */
    SVT_ERR_NO_WORK_BUFFER = -24,   /* the record has no work buffer */
    SVT_ERR_NOT_RECOGNISED = -25,   /* no format recognised the input */
    SVT_ERR_NO_ANSWER = -26,        /* field absent, not derivable, or does not fit */
    SVT_ERR_JAVA = -27              /* Java binding: result class or field missing, or exception pending */
};
/* SVT_parse may also pass on the small negative code of a format reader that refused
 * the input on its final run (-1 to -14, -20, -22). */

/* Results stored by the three validity checks. */
enum {
    SVT_CHECK_NOT_CHECKABLE = 1, /* a needed field is missing, or the jurisdiction is not in the check's table */
    SVT_CHECK_VALID = 2,         /* a rule of the jurisdiction matched */
    SVT_CHECK_INVALID = 3        /* the jurisdiction is known but no rule matched */
};

/* Life cycle and parsing. */

/** Creates a handle with no buffers yet; returns NULL when memory is exhausted. */
SVT_API SVT_ParserHandle* SVT_create(void);
/** Frees the handle and its buffers; a NULL handle is ignored. */
SVT_API void SVT_delete(SVT_ParserHandle* handle);
/** Parses one scanned input: 0, -21 (null handle, length < 1), -11 (null data), -24, -25, or a format's own code. */
SVT_API int SVT_parse(SVT_ParserHandle* handle, const void* data, int length);

/* Field getters: (handle, buffer, capacity) -> 0, -21 (bad argument or no parse yet), -26 (no answer). */

/** Two digits of the AAMVA header version, as read from the input. */
SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Names. */

/** First name: as read, else the first of the given names, else cut from the whole name. */
SVT_API int SVT_getFirstName(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Middle name(s): as read, else the given names after the first, else cut from the whole name. */
SVT_API int SVT_getMiddleName(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Last name: as read, else cut from the whole name. */
SVT_API int SVT_getLastName(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Generational suffix ("JR", "III", ...): as read, else found in the whole or last name. */
SVT_API int SVT_getNameSuffix(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Name prefix, as read; never derived from the whole name. */
SVT_API int SVT_getNamePrefix(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Whole name with blanks between its parts, cut to capacity - 2 characters; else the parts joined. */
SVT_API int SVT_getFullName(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Country, jurisdiction and issuer. */

/** Two-letter code of the issuing jurisdiction (state, province, territory), as read or from the IIN. */
SVT_API int SVT_getJurisdictionCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Country name: as read, in capitals from the ISO code, or in mixed case from the jurisdiction. */
SVT_API int SVT_getCountry(SVT_ParserHandle* handle, char* buffer, int capacity);
/** ISO 3166-1 alpha-3 country code, as read or derived from the country name. */
SVT_API int SVT_getCountryCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Six-digit issuer identification number (IIN), as read or from the jurisdiction. */
SVT_API int SVT_getIIN(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Two-letter code of the jurisdiction that the IIN belongs to. */
SVT_API int SVT_getIssuedBy(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Version of the library. */

/** Major version: 1. */
SVT_API int SVT_getMajorVersion(void);
/** Minor version: 26. */
SVT_API int SVT_getMinorVersion(void);
/** Build version: 0. */
SVT_API int SVT_getBuildVersion(void);

#ifdef __cplusplus
}
#endif

#endif /* ORVANE_PARSER_H */
