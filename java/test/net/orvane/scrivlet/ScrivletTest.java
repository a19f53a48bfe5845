package net.orvane.scrivlet;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertNull;
import static org.junit.Assert.assertTrue;

import java.io.ByteArrayOutputStream;
import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.lang.reflect.Field;
import java.lang.reflect.Method;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

public class ScrivletTest {
    // Shared with the other test classes of the package.
    static final File SAMPLES = new File(System.getProperty("orvane.samples", "samples"));
    static final String TOOL = System.getProperty("orvane.tool", "orvane-parse");

    private Scrivlet parser;

    @Before
    public void open() {
        parser = new Scrivlet();
    }

    @After
    public void close() {
        parser.close();
    }

    static byte[] sample(String name) throws IOException {
        return Files.readAllBytes(new File(SAMPLES, name + ".txt").toPath());
    }

    private ScrivletResult parsed(String name) throws IOException {
        ScrivletResult result = new ScrivletResult();
        assertEquals(name, Scrivlet.OK, parser.parse(sample(name), result));
        return result;
    }

    @Test
    public void oneSampleOfEachFamily() throws IOException {
        ScrivletResult licence = parsed("aamva-2013-arizona");
        assertEquals("JORDAN", licence.firstName);
        assertEquals("SAMPLE", licence.lastName);
        assertEquals("07/04/1988", licence.birthdate);
        assertEquals("AZ", licence.jurisdictionCode);
        assertEquals("08", licence.aamvaVersion);
        assertEquals(1, licence.isOrganDonor);
        assertEquals(1, licence.documentIdValidationStatus);
        assertEquals(1, licence.jurisdictionCodeValidationStatus);

        ScrivletResult stripe = parsed("stripe-sentinel");
        assertEquals("DL", stripe.documentType);
        assertTrue(stripe.licenseNumber != null && !stripe.licenseNumber.isEmpty());

        assertEquals("CAC", parsed("cac-v1").documentType);
        assertEquals("HC", parsed("hc-keywords").documentType);
        ScrivletResult passport = parsed("mrz-passport");
        assertEquals("PASSPORT", passport.documentType);
        assertEquals("JORDAN", passport.firstName);
        assertEquals("ZAF", parsed("national-south-africa").countryCode);
    }

    /** Every sample answers in Java exactly as orvane-parse, on the C interface, does. */
    @Test
    public void everySampleAnswersAsTheCInterfaceDoes() throws Exception {
        for (File input : samples()) {
            Map<String, Object> c = Json.parseObject(runTool(null, input));
            ScrivletResult java = new ScrivletResult();
            int status = parser.parse(Files.readAllBytes(input.toPath()), java, null);
            assertEquals(input.getName(), ((Number) c.get("status")).intValue(), status);
            for (Field field : ScrivletResult.class.getFields()) {
                String message = input.getName() + ": " + field.getName();
                Object answer = c.get(field.getName());
                if (field.getType() == String.class) {
                    assertEquals(message, answer, field.get(java));
                } else if (field.getName().endsWith("ValidationStatus")) {
                    int expected = "valid".equals(answer) ? 1 : "invalid".equals(answer) ? 2 : 0;
                    assertEquals(message, expected, field.getInt(java));
                } else {
                    assertEquals(message, answer == null ? 2 : ((Number) answer).intValue(), field.getInt(java));
                }
            }
        }
    }

    static File[] samples() {
        File[] inputs = SAMPLES.listFiles((dir, name) -> name.endsWith(".txt"));
        Arrays.sort(inputs);
        assertTrue(inputs.length > 40);
        return inputs;
    }

    /** What orvane-parse prints for the input, with an option before it unless null. */
    static String runTool(String option, File input) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(Arrays.asList(TOOL, input.getPath()));
        if (option != null) command.add(1, option);
        Process process = new ProcessBuilder(command).redirectError(ProcessBuilder.Redirect.DISCARD).start();
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        try (InputStream in = process.getInputStream()) {
            in.transferTo(out);
        }
        process.waitFor();
        return out.toString(StandardCharsets.US_ASCII).trim();
    }

    /** A result class without "iin": the fields before it are filled, then -27. */
    public static class ResultWithoutIin {
        public String firstName;
        public String lastName;
        public String documentType;
        public String countryCode;
        public String country;
        public String jurisdictionCode;
        public String middleName;
    }

    @Test
    public void aMissingFieldStopsTheCopyWithAJavaError() throws Exception {
        ResultWithoutIin result = new ResultWithoutIin();
        int status = parseNatively(parser, "nativeParse", result, sample("aamva-2013-arizona"));
        assertEquals(Scrivlet.JAVA_ERROR, status);
        assertEquals("JORDAN", result.firstName);
        assertEquals("AZ", result.jurisdictionCode);
        assertNull(result.middleName);
    }

    @Test
    public void aFieldWithoutAnswerKeepsItsValue() throws IOException {
        ScrivletResult result = new ScrivletResult();
        result.namePrefix = "KEPT";
        result.HAZMATExpDate = "KEPT TOO";
        assertEquals(Scrivlet.OK, parser.parse(sample("aamva-2013-arizona"), result));
        assertEquals("KEPT", result.namePrefix);
        assertEquals("KEPT TOO", result.HAZMATExpDate);
        assertEquals("JORDAN", result.firstName);
    }

    @Test
    public void theSymbolCheck() throws IOException {
        ScrivletResult result = new ScrivletResult();
        result.barcodeValidationStatus = 7;
        assertEquals(Scrivlet.OK, parser.parse(sample("aamva-2013-arizona"), result, new BarcodeDescription(20, 2, 5)));
        assertEquals("two rows are out of range: nothing stored", 7, result.barcodeValidationStatus);
        assertEquals(Scrivlet.OK, parser.parse(sample("aamva-2013-arizona"), result, new BarcodeDescription(20, 15, 5)));
        assertEquals("Arizona prints other sizes", 2, result.barcodeValidationStatus);
        assertEquals(Scrivlet.OK, parser.parse(sample("aamva-2013-arizona"), result, new BarcodeDescription(32, 9, 4)));
        assertEquals(1, result.barcodeValidationStatus);
    }

    @Test
    public void flagsAreZeroOneOrTwo() {
        String elements = "DCSSAMPLE\nDACJORDAN\nDAQD12345678\nDAJAZ\nDDK1\nDDL0";
        String body = "DL" + elements + "\r";
        String barcode = String.format("@\n\u001e\rANSI 636026080001DL%04d%04d%s", 31, body.length(), body);
        ScrivletResult result = new ScrivletResult();
        assertEquals(Scrivlet.OK, parser.parse(barcode.getBytes(StandardCharsets.ISO_8859_1), result));
        assertEquals(1, result.isOrganDonor);
        assertEquals(0, result.isVeteran);
        assertEquals("not on the card", 2, result.isLimitedDurationDocument);
    }

    @Test
    public void versions() {
        assertEquals("v.1.26.0", parser.getVersion());
        assertEquals(1, parser.getMajorVersion());
        assertEquals(26, parser.getMinorVersion());
        assertEquals(0, parser.getBuildVersion());
    }

    @Test
    public void aFailedParseLeavesTheResultUntouched() {
        ScrivletResult result = new ScrivletResult();
        result.firstName = "UNTOUCHED";
        result.isVeteran = 5;
        int status = parser.parse("no document at all".getBytes(StandardCharsets.US_ASCII), result);
        assertNotEquals(Scrivlet.OK, status);
        assertEquals("UNTOUCHED", result.firstName);
        assertEquals(5, result.isVeteran);
        assertNull(result.lastName);
    }

    @Test
    public void buffersTheLibraryCannotReadSafely() throws IOException {
        byte[] bytes = sample("aamva-2013-arizona");
        ScrivletResult result = new ScrivletResult();
        assertEquals("a heap buffer has no address", -11, parser.parse(ByteBuffer.wrap(bytes), bytes.length, result, null));
        ByteBuffer direct = direct(bytes);
        assertEquals("longer than the buffer", -21, parser.parse(direct, bytes.length + 1, result, null));
        assertEquals(-21, parser.parse(direct, 0, result, null));
        assertEquals(-11, parser.parse(null, 10, result, null));
        assertNull(result.firstName);
        assertEquals(Scrivlet.OK, parser.parse(direct, bytes.length, result, null));
    }

    @Test
    public void destroyingHandleZeroDoesNothing() throws Exception {
        Method destroy = Scrivlet.class.getDeclaredMethod("destroyNativeInstance", long.class);
        destroy.setAccessible(true);
        destroy.invoke(parser, 0L);
        parser.close();
        parser.close();
        parser = new Scrivlet();
    }

    /** Calls a native parse directly, past the Java checks, into any result object. */
    static int parseNatively(Scrivlet parser, String nativeName, Object result, byte[] bytes) throws Exception {
        ByteBuffer input = direct(bytes);
        Method parse = Scrivlet.class.getDeclaredMethod(nativeName, long.class, Object.class, ByteBuffer.class,
                int.class, BarcodeDescription.class);
        parse.setAccessible(true);
        Field handle = Scrivlet.class.getDeclaredField("handle");
        handle.setAccessible(true);
        return (Integer) parse.invoke(parser, handle.getLong(parser), result, input, input.capacity(), null);
    }

    private static ByteBuffer direct(byte[] bytes) {
        ByteBuffer buffer = ByteBuffer.allocateDirect(bytes.length);
        buffer.put(bytes);
        return buffer;
    }

    /** Just enough JSON for the tool's objects: strings, integers, booleans, arrays and objects. */
    static final class Json {
        static Map<String, Object> parseObject(String text) {
            int[] at = {text.indexOf('{')};
            @SuppressWarnings("unchecked")
            Map<String, Object> members = (Map<String, Object>) value(text, at);
            return members;
        }

        private static Object value(String text, int[] at) {
            skipSeparators(text, at);
            char first = text.charAt(at[0]);
            if (first == '"') return string(text, at);
            if (first == '{' || first == '[') return composite(text, at, first == '{');
            if (text.startsWith("true", at[0]) || text.startsWith("false", at[0])) {
                boolean truth = text.startsWith("true", at[0]);
                at[0] += truth ? 4 : 5;
                return truth;
            }
            int end = at[0];
            while ("-0123456789".indexOf(text.charAt(end)) >= 0) end++;
            long number = Long.parseLong(text.substring(at[0], end));
            at[0] = end;
            return number;
        }

        private static Object composite(String text, int[] at, boolean object) {
            Map<String, Object> members = new LinkedHashMap<>();
            java.util.List<Object> items = new java.util.ArrayList<>();
            at[0]++;
            while (true) {
                skipSeparators(text, at);
                if (text.charAt(at[0]) == (object ? '}' : ']')) {
                    at[0]++;
                    return object ? members : items;
                }
                if (object) {
                    String key = string(text, at);
                    at[0] = text.indexOf(':', at[0]) + 1;
                    members.put(key, value(text, at));
                } else {
                    items.add(value(text, at));
                }
            }
        }

        private static void skipSeparators(String text, int[] at) {
            while (text.charAt(at[0]) == ',' || text.charAt(at[0]) == ' ') at[0]++;
        }

        private static String string(String text, int[] at) {
            StringBuilder value = new StringBuilder();
            int i = text.indexOf('"', at[0]) + 1;
            for (; text.charAt(i) != '"'; i++) {
                char c = text.charAt(i);
                if (c != '\\') {
                    value.append(c);
                    continue;
                }
                char escape = text.charAt(++i);
                switch (escape) {
                    case 'n': value.append('\n'); break;
                    case 'r': value.append('\r'); break;
                    case 't': value.append('\t'); break;
                    case 'u': value.append((char) Integer.parseInt(text.substring(i + 1, i + 5), 16)); i += 4; break;
                    default: value.append(escape);
                }
            }
            at[0] = i + 1;
            return value.toString();
        }
    }
}
