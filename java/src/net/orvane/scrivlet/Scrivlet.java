package net.orvane.scrivlet;

import java.nio.ByteBuffer;

/**
 * Parses the text read from an identity document (a PDF417 barcode, a magnetic stripe,
 * a machine-readable zone) into a {@link ScrivletResult} in one native call.
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

    private static boolean loaded;
    private long handle;

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
        return nativeParse(handleOrThrow(), result, input, length, barcode);
    }

    /** Parses a whole byte array into {@code result}; see {@link #parse(ByteBuffer, int, ScrivletResult, BarcodeDescription)}. */
    public int parse(byte[] input, ScrivletResult result, BarcodeDescription barcode) {
        ByteBuffer direct = ByteBuffer.allocateDirect(input.length);
        direct.put(input);
        return parse(direct, input.length, result, barcode);
    }

    /** Parses a whole byte array into {@code result}, without a symbol-size check. */
    public int parse(byte[] input, ScrivletResult result) {
        return parse(input, result, null);
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

    private native long createNativeInstance();

    private native void destroyNativeInstance(long handle);

    // The result is any object whose fields are named as those of ScrivletResult.
    private native int nativeParse(long handle, Object result, ByteBuffer input, int length,
                                   BarcodeDescription barcode);

    private native int nativeGetMajorVersion();

    private native int nativeGetMinorVersion();

    private native int nativeGetBuildVersion();

    private native String nativeGetVersion();
}
