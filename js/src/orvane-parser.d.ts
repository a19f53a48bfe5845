/** How the symbol was printed, for the check that the jurisdiction prints such symbols. */
export interface BarcodeSymbol {
  /** Data columns, 3 to 33. */
  columns: number;
  /** Rows, 3 to 90. */
  rows: number;
  /** Error-correction level, 0 to 8. */
  errorCorrectionLevel: number;
}

export interface ParseOptions {
  /** Read the text exactly as the formats are written, repairing nothing. Default false. */
  strict?: boolean;
  /** When given, the result also says whether such a symbol is one the jurisdiction prints. */
  barcode?: BarcodeSymbol | null;
}

export type CheckVerdict = 'valid' | 'invalid' | 'not checkable';

/** The library's result object: only the members the document answers are present. */
export interface OrvaneResult {
  status: 0;
  /** 0 AAMVA, 1 magnetic stripe, 2 HC card, 3 military ID, 4 national document, 5 machine-readable zone. */
  formatGroup: number;
  formatId: number;
  formatName?: string;

  firstName?: string;
  lastName?: string;
  middleName?: string;
  nameSuffix?: string;
  namePrefix?: string;
  fullName?: string;
  documentType?: string;
  countryCode?: string;
  country?: string;
  jurisdictionCode?: string;
  iin?: string;
  issuedBy?: string;
  address1?: string;
  address2?: string;
  city?: string;
  postalCode?: string;
  licenseNumber?: string;
  classificationCode?: string;
  vehicleClassCode?: string;
  vehicleClassCodeDescription?: string;
  restrictionCode?: string;
  restrictionCodeDescription?: string;
  endorsementsCode?: string;
  endorsementCodeDescription?: string;
  complianceType?: string;
  aamvaVersion?: string;
  gender?: string;
  eyeColor?: string;
  hairColor?: string;
  race?: string;
  height?: string;
  weightKG?: string;
  weightLBS?: string;

  /** Dates as MM/DD/YYYY, each with an ...ISO twin as YYYY-MM-DD. */
  birthdate?: string;
  birthdateISO?: string;
  expirationDate?: string;
  expirationDateISO?: string;
  issueDate?: string;
  issueDateISO?: string;
  cardRevisionDate?: string;
  cardRevisionDateISO?: string;
  HAZMATExpDate?: string;
  HAZMATExpDateISO?: string;

  /** Flags: 1 yes, 0 no; absent when the document does not say. */
  isLimitedDurationDocument?: 0 | 1;
  isOrganDonor?: 0 | 1;
  isVeteran?: 0 | 1;

  documentIdValidationStatus?: CheckVerdict;
  jurisdictionCodeValidationStatus?: CheckVerdict;
  /** Present when parse() was given a barcode symbol. */
  barcodeValidationStatus?: CheckVerdict | 'symbol out of range';

  fieldCount: number;
  checkDigits: 'valid' | 'invalid' | 'none';
  /** The fields whose check digits fail, e.g. ["documentNumber", "composite"]. */
  checkDigitFailures?: string[];
  mrzCheckDigits?: 'valid' | 'invalid';
  mrzCheckDigitFailure?: string;
  /** Whole years from the birth date to today. */
  age?: number;
  expired?: boolean;
  /** The repairs the lenient parse made to damaged text, e.g. ["crlf-lines"]. */
  repairs?: string[];
  /** Every raw element in document order: AAMVA element ids, zone fields or field names. */
  elements: Record<string, string>;

  /** Members a later library version adds. */
  [member: string]: unknown;
}

export declare class OrvaneParser {
  /** Compiles the WebAssembly code on first use and gives a parser with its own memory and handle. */
  static load(): Promise<OrvaneParser>;
  private constructor();
  /** The library's version, e.g. "1.26.0". */
  readonly version: string;
  /**
   * Parses one scanned input. A string is read as Latin-1 when every character fits, else as
   * UTF-8. Gives the result object, or null when no format recognised the input.
   * Throws a TypeError for input of another type and a RangeError when memory runs out.
   */
  parse(input: Uint8Array | ArrayBufferView | ArrayBuffer | string, options?: ParseOptions): OrvaneResult | null;
  /** Frees the handle and the parser's memory; a disposed parser refuses to parse. */
  dispose(): void;
}
