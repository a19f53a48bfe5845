package net.orvane.scrivlet;

/** The PDF417 symbol that carried the data: data columns, rows and error-correction level. */
public class BarcodeDescription {
    public int rows;
    public int columns;
    public int ecl;

    public BarcodeDescription() {}

    public BarcodeDescription(int columns, int rows, int ecl) {
        this.columns = columns;
        this.rows = rows;
        this.ecl = ecl;
    }
}
