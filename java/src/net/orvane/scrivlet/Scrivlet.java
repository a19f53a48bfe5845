package net.orvane.scrivlet;

import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * Parses the text read from an identity document (a PDF417 barcode, a magnetic stripe,
 * a machine-readable zone) into a {@link ScrivletResult} in one native call.
 *
 * <p>{@code parse} reads the input exactly as the formats are written; {@code parseLenient}
 * also reads it with the damage that scanners, keyboard wedges and apps do repaired (text
 * decoded as UTF-8, a symbology identifier in front, CR LF line breaks, indented lines,
 * ...) and keeps the better reading. After either, the methods from {@link #getFormat()}
 * on tell what the last parse read: the format, the raw elements, check digits, age and
 * expiry, the repairs, or everything as one JSON object.
 *
 * <p>One instance holds one native parser; use it from one thread at a time and close it
 * when done. The native library is loaded from the path in the system property
 * {@code orvane.parser.library} when it is set, else from {@code java.library.path}, or
 * explicitly with {@link #loadLibrary(String)}.
 */
public final class Scrivlet implements AutoCloseable {
    /** Status of a parse that succeeded. */
    public static final int OK = 0;
    /** The result or barcode object lacks a field the library fills, or a Java error happened. */
    public static final int JAVA_ERROR = -27;

    /** An argument was refused, or nothing has been parsed yet. */
    public static final int INVALID_ARGUMENT = -21;
    /** The last parse recognised nothing, or the document has no such answer. */
    public static final int NO_ANSWER = -26;

    /** Check digits: the document has none, or the last parse recognised nothing. */
    public static final int CHECK_DIGITS_NONE = 0;
    /** Check digits: every one holds. */
    public static final int CHECK_DIGITS_VALID = 1;
    /** Check digits: some fail; {@link #getCheckDigitFailures()} names the fields. */
    public static final int CHECK_DIGITS_INVALID = 2;

    // Room for the longest answer of an input of the handle's minimum buffer size.
    private static final int MINIMUM_TEXT_ROOM = 8193;

    private static boolean loaded;
    private long handle;
    private int lastLength;  // of the last input, which bounds every element's length

    /** Loads the native library from an absolute path, before any instance is made. */
    public static synchronized void loadLibrary(String absolutePath) {
        System.load(absolutePath);
        loaded = true;
    }

    private static synchronized void ensureLoaded() {
        if (loaded) return;
        String path = System.getProperty("orvane.parser.library");
        if (path != null && !path.isEmpty()) {
            System.load(path);
        } else {
            System.loadLibrary("orvane_parser");
        }
        loaded = true;
    }

    /** Creates a parser; throws {@link OutOfMemoryError} when the native side cannot. */
    public Scrivlet() {
        ensureLoaded();
        handle = createNativeInstance();
        if (handle == 0) throw new OutOfMemoryError("no memory for a native parser");
    }

    /**
     * Parses the first {@code length} bytes of a direct buffer into {@code result}, and
     * checks the symbol size when {@code barcode} describes the PDF417 symbol (else null).
     * Returns {@link #OK}, a negative status of the C interface when nothing was
     * recognised (the result is then untouched), or {@link #JAVA_ERROR}.
     */
    public int parse(ByteBuffer input, int length, ScrivletResult result, BarcodeDescription barcode) {
        long parser = handleOrThrow();
        lastLength = length;
        return nativeParse(parser, result, input, length, barcode);
    }

    /** Parses a whole byte array into {@code result}; see {@link #parse(ByteBuffer, int, ScrivletResult, BarcodeDescription)}. */
    public int parse(byte[] input, ScrivletResult result, BarcodeDescription barcode) {
        return parse(direct(input), input.length, result, barcode);
    }

    /** Parses a whole byte array into {@code result}, without a symbol-size check. */
    public int parse(byte[] input, ScrivletResult result) {
        return parse(input, result, null);
    }

    /**
     * As {@link #parse(ByteBuffer, int, ScrivletResult, BarcodeDescription)}, and also
     * reads the input with the damage scanners and apps do repaired, keeping the better
     * reading; {@link #getRepairs()} names what was
     * repaired. Use it for text that passed through a keyboard wedge, a text field or an
     * app; use {@code parse} where the bytes come straight from the reader and a damaged
     * input should be refused.
     */
    public int parseLenient(ByteBuffer input, int length, ScrivletResult result, BarcodeDescription barcode) {
        long parser = handleOrThrow();
        lastLength = length;
        return nativeParseLenient(parser, result, input, length, barcode);
    }

    /** Parses a whole byte array leniently; see {@link #parseLenient(ByteBuffer, int, ScrivletResult, BarcodeDescription)}. */
    public int parseLenient(byte[] input, ScrivletResult result, BarcodeDescription barcode) {
        return parseLenient(direct(input), input.length, result, barcode);
    }

    /** Parses a whole byte array leniently, without a symbol-size check. */
    public int parseLenient(byte[] input, ScrivletResult result) {
        return parseLenient(input, result, null);
    }

    /**
     * The number of the format that read the last input (0 to 67; from 100 for the
     * formats only the lenient parse tries), {@link #NO_ANSWER} when the last parse
     * recognised nothing, {@link #INVALID_ARGUMENT} before the first parse.
     */
    public int getFormat() {
        int[] format = new int[2];
        int status = nativeGetFormat(handleOrThrow(), format);
        return status == OK ? format[1] : status;
    }

    /**
     * The family of that format: 0 AAMVA barcode, 1 magnetic stripe, 2 HC card, 3
     * military ID, 4 national document, 5 machine-readable zone; or a negative status as
     * {@link #getFormat()} gives.
     */
    public int getFormatGroup() {
        int[] format = new int[2];
        int status = nativeGetFormat(handleOrThrow(), format);
        return status == OK ? format[0] : status;
    }

    /** The name of that format ("AAMVA DL/ID 2013 (version 08)"), or null. */
    public String getFormatName() {
        byte[] buffer = new byte[256];
        return nativeGetFormatName(handleOrThrow(), buffer) == OK ? text(buffer) : null;
    }

    /** The number of fields the last reading filled, or a negative status as {@link #getFormat()} gives. */
    public int getFieldCount() {
        int[] count = new int[1];
        int status = nativeGetFieldCount(handleOrThrow(), count);
        return status == OK ? count[0] : status;
    }

    /**
     * The raw elements of the last document in document order, id to value: AAMVA element
     * ids ("DAQ", "DCS", jurisdiction elements such as "ZAA"), the fields of a zone
     * ("documentNumber", "nationality", "optionalData1", ...), or the stored fields of the
     * other families ("licenseNumber", ...). An id the document repeats keeps its first
     * value. Empty when the last parse recognised nothing.
     */
    public Map<String, String> getElements() {
        long parser = handleOrThrow();
        Map<String, String> elements = new LinkedHashMap<>();
        int[] count = new int[1];
        if (nativeGetElementCount(parser, count) != OK) return elements;
        byte[] id = new byte[64];
        byte[] value = new byte[textRoom()];
        for (int i = 0; i < count[0]; i++) {
            if (nativeGetElementAt(parser, i, id, value) == OK) elements.putIfAbsent(text(id), text(value));
        }
        return elements;
    }

    /** The value of the first element with this id (see {@link #getElements()}), or null. */
    public String getElement(String id) {
        byte[] name = (id + "\0").getBytes(StandardCharsets.ISO_8859_1);
        byte[] value = new byte[textRoom()];
        return nativeGetElement(handleOrThrow(), name, value) == OK ? text(value) : null;
    }

    /**
     * Whether the check digits of the last document hold (those of a machine-readable
     * zone, the Luhn digit of a South African identity number): {@link #CHECK_DIGITS_VALID},
     * {@link #CHECK_DIGITS_INVALID}, or {@link #CHECK_DIGITS_NONE} for a document without
     * them or a parse that recognised nothing.
     */
    public int getCheckDigitStatus() {
        int[] verdict = new int[1];
        if (nativeValidateCheckDigits(handleOrThrow(), verdict) != OK) return CHECK_DIGITS_NONE;
        return verdict[0] == 2 ? CHECK_DIGITS_VALID : verdict[0] == 3 ? CHECK_DIGITS_INVALID : CHECK_DIGITS_NONE;
    }

    /** The fields whose check digits fail ("documentNumber", "composite", ...), in document order; empty when none. */
    public List<String> getCheckDigitFailures() {
        byte[] buffer = new byte[256];
        return nativeGetCheckDigitFailures(handleOrThrow(), buffer) == OK ? list(text(buffer)) : Collections.emptyList();
    }

    /** Whole years from the birth date to the day of the last parse, or -1 when not known. */
    public int getAge() {
        int[] years = new int[1];
        return nativeGetAge(handleOrThrow(), years) == OK ? years[0] : -1;
    }

    /**
     * Whether the document had expired on the day of the last parse: 0 no, 1 yes, 2 not
     * known (no expiry date), as the flags of {@link ScrivletResult}; a document dated
     * 12/31/9999 never expires.
     */
    public int isExpired() {
        int[] expired = new int[1];
        return nativeIsExpired(handleOrThrow(), expired) == OK ? expired[0] : 2;
    }

    /** The repairs the last parse applied ("line-indents", "utf8-to-latin1", ...); empty after {@code parse}. */
    public List<String> getRepairs() {
        byte[] buffer = new byte[512];
        return nativeGetRepairs(handleOrThrow(), buffer) == OK ? list(text(buffer)) : Collections.emptyList();
    }

    /**
     * The whole result of the last parse as one JSON object: its status, format, every
     * answer, the checks, check digits, age, expiry, repairs and raw elements. A failed
     * parse gives its status alone; before the first parse, null.
     */
    public String getResultJson() {
        long parser = handleOrThrow();
        int[] length = new int[1];
        byte[] buffer = new byte[16384];
        int status = nativeGetResultJson(parser, buffer, length);
        if (status == NO_ANSWER) {
            buffer = new byte[length[0] + 1];
            status = nativeGetResultJson(parser, buffer, length);
        }
        // The object escapes every byte beyond ASCII.
        return status == OK ? new String(buffer, 0, length[0], StandardCharsets.US_ASCII) : null;
    }

    /** The library's version as text, "v.1.26.0". */
    public String getVersion() { return nativeGetVersion(); }

    public int getMajorVersion() { return nativeGetMajorVersion(); }

    public int getMinorVersion() { return nativeGetMinorVersion(); }

    public int getBuildVersion() { return nativeGetBuildVersion(); }

    /** Frees the native parser; the instance cannot parse afterwards. */
    @Override
    public void close() {
        if (handle != 0) {
            destroyNativeInstance(handle);
            handle = 0;
        }
    }

    private long handleOrThrow() {
        if (handle == 0) throw new IllegalStateException("the parser is closed");
        return handle;
    }

    private static ByteBuffer direct(byte[] input) {
        ByteBuffer direct = ByteBuffer.allocateDirect(input.length);
        direct.put(input);
        return direct;
    }

    // An element is part of the framed input, which is never longer than the handle's
    // buffer: the minimum size, or the last input's length.
    private int textRoom() {
        return Math.max(MINIMUM_TEXT_ROOM, lastLength + 1);
    }

    // The library's texts are bytes, Latin-1 where they go beyond ASCII, up to a NUL.
    private static String text(byte[] buffer) {
        int end = 0;
        while (end < buffer.length && buffer[end] != 0) end++;
        return new String(buffer, 0, end, StandardCharsets.ISO_8859_1);
    }

    private static List<String> list(String commaSeparated) {
        return commaSeparated.isEmpty() ? Collections.emptyList()
                                        : Collections.unmodifiableList(new ArrayList<>(Arrays.asList(commaSeparated.split(","))));
    }

    private native long createNativeInstance();

    private native void destroyNativeInstance(long handle);

    // The result is any object whose fields are named as those of ScrivletResult.
    private native int nativeParse(long handle, Object result, ByteBuffer input, int length,
                                   BarcodeDescription barcode);

    private native int nativeParseLenient(long handle, Object result, ByteBuffer input, int length,
                                          BarcodeDescription barcode);

    private native int nativeGetFormat(long handle, int[] groupAndNumber);

    private native int nativeGetFormatName(long handle, byte[] buffer);

    private native int nativeGetFieldCount(long handle, int[] count);

    private native int nativeGetElementCount(long handle, int[] count);

    private native int nativeGetElementAt(long handle, int index, byte[] id, byte[] value);

    private native int nativeGetElement(long handle, byte[] id, byte[] value);

    private native int nativeValidateCheckDigits(long handle, int[] verdict);

    private native int nativeGetCheckDigitFailures(long handle, byte[] buffer);

    private native int nativeGetAge(long handle, int[] years);

    private native int nativeIsExpired(long handle, int[] expired);

    private native int nativeGetRepairs(long handle, byte[] buffer);

    private native int nativeGetResultJson(long handle, byte[] buffer, int[] length);

    private native int nativeGetMajorVersion();

    private native int nativeGetMinorVersion();

    private native int nativeGetBuildVersion();

    private native String nativeGetVersion();
}
