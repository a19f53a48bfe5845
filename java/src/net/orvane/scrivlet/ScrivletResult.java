package net.orvane.scrivlet;

/**
 * The fields of one parsed document. Texts the document does not yield stay null;
 * flags are 0 (no), 1 (yes) or 2 (not known); checks are 1 (valid), 2 (invalid) or 0
 * (not checkable or not checked). Dates read MM/DD/YYYY.
 */
public class ScrivletResult {
    public String firstName;
    public String lastName;
    public String documentType;
    public String countryCode;
    public String country;
    public String jurisdictionCode;
    public String iin;
    public String middleName;
    public String nameSuffix;
    public String namePrefix;
    public String fullName;
    public String address1;
    public String address2;
    public String city;
    public String licenseNumber;
    public String classificationCode;
    public String restrictionCode;
    public String restrictionCodeDescription;
    public String endorsementsCode;
    public String endorsementCodeDescription;
    public String expirationDate;
    public String HAZMATExpDate;
    public String birthdate;
    public String cardRevisionDate;
    public String gender;
    public String issueDate;
    public String issuedBy;
    public String postalCode;
    public String eyeColor;
    public String race;
    public String hairColor;
    public String height;
    public String weightKG;
    public String weightLBS;
    public String complianceType;
    public String vehicleClassCode;
    public String vehicleClassCodeDescription;
    public String aamvaVersion;

    public int isLimitedDurationDocument = 2;
    public int isOrganDonor = 2;
    public int isVeteran = 2;

    public int documentIdValidationStatus;
    public int jurisdictionCodeValidationStatus;
    public int barcodeValidationStatus;
}
