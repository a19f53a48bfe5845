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
/** As SVT_parse, after repairing damage scanners and apps do to the text when the input shows it; same statuses. */
SVT_API int SVT_parseLenient(SVT_ParserHandle* handle, const void* data, int length);
/** The repairs the last parse applied, comma-separated in the order they run ("utf8-to-latin1,crlf-lines"); -26 and "" when none or they do not fit. */
SVT_API int SVT_getRepairs(SVT_ParserHandle* handle, char* buffer, int capacity);

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
/** Whole name as stored, blanks between its parts, cut to capacity - 2 characters; else the parts joined, cut to capacity - 1. */
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

/* Address and licence number. */

/** First address line (street), blanks tidied. */
SVT_API int SVT_getAddress1(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Second address line, blanks tidied. */
SVT_API int SVT_getAddress2(SVT_ParserHandle* handle, char* buffer, int capacity);
/** City. */
SVT_API int SVT_getCity(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Postal code; US ZIP codes as 12345-6789 (-18 when capacity < 11); derived from the address line when not stored. */
SVT_API int SVT_getPostalCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Document or customer number, cut to capacity - 2 characters; where the jurisdiction prints it in groups, without their blanks (and hyphens) and cut to capacity - 1. */
SVT_API int SVT_getLicenseNumber(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Dates, answered as MM/DD/YYYY. */

/** Expiry date; "12/31/9999" for a document that does not expire. -26 also when capacity < 11. */
SVT_API int SVT_getExpirationDate(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Date of birth. -26 also when capacity < 11. */
SVT_API int SVT_getBirthdate(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Issue date. -26 also when capacity < 11. */
SVT_API int SVT_getIssueDate(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Date of the card design revision. -26 also when capacity < 11. */
SVT_API int SVT_getCardRevisionDate(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Expiry date of the hazardous-materials endorsement. -26 also when capacity < 11. */
SVT_API int SVT_getHAZMATExpDate(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Physical description. */

/** "Male" or "Female"; -18 when the capacity is below 5 or 7 respectively. */
SVT_API int SVT_getGender(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Eye colour name ("Brown"), or the stored code as it stands when it names no colour. */
SVT_API int SVT_getEyeColor(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Hair colour name ("Grey"), or the stored code as it stands when it names no colour. */
SVT_API int SVT_getHairColor(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Race, as stored on the document. */
SVT_API int SVT_getRace(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Height: the document's own text (cut to fit), else feet and inches (5'10") or centimetres (175cm), -18 when those do not fit. */
SVT_API int SVT_getHeight(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Weight in kilograms or a kilogram range; -21 when capacity < 4. A converted number that fills the buffer exactly is not terminated. */
SVT_API int SVT_getWeightKG(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Weight in pounds or a pound range; -21 when capacity < 4. A converted number that fills the buffer exactly is not terminated. */
SVT_API int SVT_getWeightLBS(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Licence codes and document type. */

/** Vehicle class code; always the same answer as SVT_getVehicleClassCode. */
SVT_API int SVT_getClassificationCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Vehicle class code, as the document gives it. */
SVT_API int SVT_getVehicleClassCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Description of the vehicle class, as the document gives it. */
SVT_API int SVT_getVehicleClassCodeDescription(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Restriction codes, with runs of white space reduced to one blank. */
SVT_API int SVT_getRestrictionCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Description of the restrictions, as the document gives it. */
SVT_API int SVT_getRestrictionCodeDescription(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Endorsement codes, as the document gives them. */
SVT_API int SVT_getEndorsementsCode(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Description of the endorsements, as the document gives it. */
SVT_API int SVT_getEndorsementCodeDescription(SVT_ParserHandle* handle, char* buffer, int capacity);
/** The one-character compliance type; -26 when it is not exactly one printable character. */
SVT_API int SVT_getComplianceType(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Document type ("DL", "ID", "PASSPORT", ...), else "DL" or "UNKNOWN" from the fields present; never -26. */
SVT_API int SVT_getDocumentType(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Flags: (handle, int* value) -> 0 with value 1 or 0, -21, or -26 when the field is empty. */

/** 1 when the document is of limited duration. */
SVT_API int SVT_getLimitedDurationDocument(SVT_ParserHandle* handle, int* value);
/** 1 when the holder is an organ donor. */
SVT_API int SVT_getOrganDonor(SVT_ParserHandle* handle, int* value);
/** 1 when the holder is a veteran. */
SVT_API int SVT_getVeteran(SVT_ParserHandle* handle, int* value);

/* Validity checks: (handle, ..., int* status) -> 0 with status 1 (not checkable), 2 (valid)
 * or 3 (invalid); -21 for a null handle or status pointer; other failures returned as
 * they are (SVT_validateDocumentId: -21 before the first parse), the status left unchanged. */

/** Whether the licence number has a shape its jurisdiction issues. */
SVT_API int SVT_validateDocumentId(SVT_ParserHandle* handle, int* status);
/** Whether a PDF417 symbol of these data columns (3-33), rows (3-90) and error-correction level (0-8) is one the jurisdiction prints; -21 outside them. */
SVT_API int SVT_validateBarcode(SVT_ParserHandle* handle, int columns, int rows, int errorCorrectionLevel, int* status);
/** Whether the jurisdiction code agrees with the issuer identification number. */
SVT_API int SVT_validateJurisdictionCode(SVT_ParserHandle* handle, int* status);

/* What was read: the format, how much, every element. -21 for a bad argument or before
 * the first parse, -26 when the last parse recognised nothing or there is no answer. */

/** The family (0 AAMVA, 1 stripe, 2 HC, 3 military ID, 4 national, 5 zone) and number of the format that read the input. */
SVT_API int SVT_getFormat(SVT_ParserHandle* handle, int* formatGroup, int* formatId);
/** Name of that format, e.g. "AAMVA DL/ID 2013 (version 08)" or "Passport zone (TD3)". */
SVT_API int SVT_getFormatName(SVT_ParserHandle* handle, char* buffer, int capacity);
/** Number of fields the reading filled, so that a caller can refuse a thin one. */
SVT_API int SVT_getFieldCount(SVT_ParserHandle* handle, int* count);
/** Number of raw elements of the document (see SVT_getElementAt). */
SVT_API int SVT_getElementCount(SVT_ParserHandle* handle, int* count);
/** The element at index in document order: its id (AAMVA element id, zone field or field name) and value, trimmed of padding. */
SVT_API int SVT_getElementAt(SVT_ParserHandle* handle, int index, char* id, int idCapacity, char* value, int valueCapacity);
/** The value of the first element with this id ("DCF", "ZAZ", "nationality", ...). */
SVT_API int SVT_getElement(SVT_ParserHandle* handle, const char* id, char* value, int capacity);

/* Check digits: (handle, int* status) -> 0 with status 1 (the document has none),
 * 2 (all hold) or 3 (some fail); -21, or -26 when the last parse recognised nothing. */

/** Whether the check digits of a machine-readable zone (or a South African identity number) hold. */
SVT_API int SVT_validateCheckDigits(SVT_ParserHandle* handle, int* status);
/** The fields whose check digits fail, comma-separated ("documentNumber,composite"); -26 when none fails. */
SVT_API int SVT_getCheckDigitFailures(SVT_ParserHandle* handle, char* buffer, int capacity);

/* Age and expiry, on the date of the last parse: 0, -21, or -26 when the date is missing or invalid. */

/** Whole years from the birth date to the date of the parse. */
SVT_API int SVT_getAge(SVT_ParserHandle* handle, int* years);
/** 1 when the expiry date lies before the date of the parse, else 0; a document dated 12/31/9999 never expires. */
SVT_API int SVT_isExpired(SVT_ParserHandle* handle, int* expired);

/* Everything at once. */

/** The whole result as one JSON object (status, format, every answer, checks, elements); *length is the
 * length needed without the terminator, also when it does not fit, and then the status is -26. */
SVT_API int SVT_getResultJson(SVT_ParserHandle* handle, char* buffer, int capacity, int* length);

/* Version of the library. */

/** The version as text, "v.1.26.0"; -21 for a null buffer or capacity below 1, -26 and "" when it does not fit. */
SVT_API int SVT_getVersionText(char* buffer, int capacity);

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
