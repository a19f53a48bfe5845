package net.orvane.scrivlet;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertNull;
import static org.junit.Assert.assertTrue;
import static org.junit.Assert.fail;

import java.io.File;
import java.io.IOException;
import java.lang.reflect.Field;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.time.LocalDate;
import java.time.Period;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** The lenient parse and the answers about the last parse, against the C interface's tool. */
public class ScrivletAnswersTest {
    private Scrivlet parser;

    @Before
    public void open() {
        parser = new Scrivlet();
    }

    @After
    public void close() {
        parser.close();
    }

    // The Arizona sample with every element line indented, as some apps hand it over.
    private static byte[] indented() throws IOException {
        String text = new String(ScrivletTest.sample("aamva-2013-arizona"), StandardCharsets.ISO_8859_1);
        return text.replace("\nD", "\n  D").getBytes(StandardCharsets.ISO_8859_1);
    }

    /** The tool prints the library's object with the input's name first: the same object without it. */
    private static String withoutInput(String toolLine) {
        int comma = toolLine.indexOf(",\"status\":");
        return "{" + toolLine.substring(comma + 1);
    }

    @Test
    public void theJsonOfEverySampleIsTheToolsBothWays() throws Exception {
        for (File input : ScrivletTest.samples()) {
            byte[] bytes = Files.readAllBytes(input.toPath());
            parser.parse(bytes, new ScrivletResult());
            assertEquals(input.getName(), withoutInput(ScrivletTest.runTool("--strict", input)), parser.getResultJson());
            parser.parseLenient(bytes, new ScrivletResult());
            String json = parser.getResultJson();
            assertEquals(input.getName(), withoutInput(ScrivletTest.runTool(null, input)), json);
            Map<String, Object> object = ScrivletTest.Json.parseObject(json);
            assertEquals(input.getName(), object.get("elements"), parser.getElements());
            assertEquals(input.getName(), ((Number) object.get("formatId")).intValue(), parser.getFormat());
            assertEquals(input.getName(), object.get("formatName"), parser.getFormatName());
        }
    }

    @Test
    public void parseLenientFillsTheResultAsParseDoesOnCleanInput() throws Exception {
        for (File input : ScrivletTest.samples()) {
            byte[] bytes = Files.readAllBytes(input.toPath());
            ScrivletResult strict = new ScrivletResult();
            ScrivletResult lenient = new ScrivletResult();
            BarcodeDescription symbol = new BarcodeDescription(32, 9, 4);
            assertEquals(parser.parse(bytes, strict, symbol), parser.parseLenient(bytes, lenient, symbol));
            for (Field field : ScrivletResult.class.getFields()) {
                assertEquals(input.getName() + ": " + field.getName(), field.get(strict), field.get(lenient));
            }
        }
    }

    @Test
    public void parseLenientRepairsWhatParseCannotRead() throws IOException {
        ScrivletResult strict = new ScrivletResult();
        assertEquals(Scrivlet.OK, parser.parse(indented(), strict));
        assertNull(strict.firstName);
        assertEquals(Collections.emptyList(), parser.getRepairs());
        ScrivletResult lenient = new ScrivletResult();
        assertEquals(Scrivlet.OK, parser.parseLenient(indented(), lenient, new BarcodeDescription(32, 9, 4)));
        assertEquals("JORDAN", lenient.firstName);
        assertEquals("07/04/1988", lenient.birthdate);
        assertEquals(1, lenient.barcodeValidationStatus);
        assertEquals(Arrays.asList("line-indents"), parser.getRepairs());
        assertEquals(35, parser.getFieldCount());
    }

    @Test
    public void theLenientParseFillsAnyResultClassAsParseDoes() throws Exception {
        ScrivletTest.ResultWithoutIin partial = new ScrivletTest.ResultWithoutIin();
        int status = ScrivletTest.parseNatively(parser, "nativeParseLenient", partial, indented());
        assertEquals(Scrivlet.JAVA_ERROR, status);
        assertEquals("JORDAN", partial.firstName);
        assertEquals("AZ", partial.jurisdictionCode);
        assertNull(partial.middleName);
    }

    @Test
    public void formatAndCountBeforeAndAfterParses() throws IOException {
        assertEquals(Scrivlet.INVALID_ARGUMENT, parser.getFormat());
        assertEquals(Scrivlet.INVALID_ARGUMENT, parser.getFieldCount());
        assertNull(parser.getFormatName());
        assertNull(parser.getResultJson());
        assertEquals(Collections.emptyMap(), parser.getElements());

        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("aamva-2013-arizona"), new ScrivletResult()));
        assertEquals(0, parser.getFormatGroup());
        assertEquals(42, parser.getFormat());
        assertEquals("AAMVA DL/ID 2013 (version 08)", parser.getFormatName());
        assertEquals(35, parser.getFieldCount());
        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("mrz-passport"), new ScrivletResult()));
        assertEquals(5, parser.getFormatGroup());
        assertEquals(64, parser.getFormat());
        assertEquals("Passport zone (TD3)", parser.getFormatName());

        assertNotEquals(Scrivlet.OK, parser.parse("no document".getBytes(StandardCharsets.US_ASCII), new ScrivletResult()));
        assertEquals(Scrivlet.NO_ANSWER, parser.getFormat());
        assertEquals(Scrivlet.NO_ANSWER, parser.getFormatGroup());
        assertEquals(Scrivlet.NO_ANSWER, parser.getFieldCount());
        assertNull(parser.getFormatName());
        assertEquals("{\"status\":-25}", parser.getResultJson());
        assertEquals(Collections.emptyMap(), parser.getElements());
        assertEquals(Scrivlet.CHECK_DIGITS_NONE, parser.getCheckDigitStatus());
        assertEquals(-1, parser.getAge());
        assertEquals(2, parser.isExpired());
    }

    @Test
    public void elementsInDocumentOrder() throws IOException {
        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("aamva-2013-arizona"), new ScrivletResult()));
        List<String> ids = new ArrayList<>(parser.getElements().keySet());
        assertEquals(29, ids.size());
        assertEquals("DAQ", ids.get(0));
        assertEquals("DCS", ids.get(1));
        assertEquals("ZAA", ids.get(28));
        assertEquals("9F2K7Q1Z3804", parser.getElement("DCF"));
        assertEquals("N", parser.getElement("ZAA"));
        assertNull(parser.getElement("DZZ"));

        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("mrz-passport"), new ScrivletResult()));
        assertEquals("UTO", parser.getElement("nationality"));
        assertEquals("AB1234567", parser.getElements().get("optionalData1"));
    }

    @Test
    public void bytesBeyondAsciiReadAsLatin1() {
        String body = "DLDCSSAMPLE\nDACJORDAN\nDAQD12345678\nDAJAZ\rZAZAAJOS\u00c9\r";
        String barcode = String.format("@\n\u001e\rANSI 636026080002DL%04d%04dZA%04d%04d%s", 41, body.length() - 9,
                41 + body.length() - 9, 9, body);
        assertEquals(Scrivlet.OK, parser.parse(barcode.getBytes(StandardCharsets.ISO_8859_1), new ScrivletResult()));
        assertEquals("JOS\u00c9", parser.getElement("ZAA"));
        assertEquals("JOS\u00c9", parser.getElements().get("ZAA"));
        assertTrue(parser.getResultJson().contains("\"ZAA\":\"JOS\\u00c9\""));
    }

    @Test
    public void checkDigits() throws IOException {
        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("mrz-passport"), new ScrivletResult()));
        assertEquals(Scrivlet.CHECK_DIGITS_VALID, parser.getCheckDigitStatus());
        assertEquals(Collections.emptyList(), parser.getCheckDigitFailures());
        byte[] wrong = Files.readAllBytes(new File(ScrivletTest.SAMPLES, "../tests/data/mrz/passport-wrong-number-check-digit.txt").toPath());
        assertEquals(Scrivlet.OK, parser.parse(wrong, new ScrivletResult()));
        assertEquals(Scrivlet.CHECK_DIGITS_INVALID, parser.getCheckDigitStatus());
        assertEquals(Arrays.asList("documentNumber", "composite"), parser.getCheckDigitFailures());
        assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("aamva-2013-arizona"), new ScrivletResult()));
        assertEquals(Scrivlet.CHECK_DIGITS_NONE, parser.getCheckDigitStatus());
    }

    @Test
    public void ageAndExpiryOnTheDayOfTheParse() throws IOException {
        for (int attempt = 0; attempt < 3; attempt++) {
            LocalDate today = LocalDate.now();
            assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("aamva-2013-arizona"), new ScrivletResult()));
            int age = parser.getAge();
            int expired = parser.isExpired();
            if (!today.equals(LocalDate.now())) continue;  // the parse straddled midnight
            assertEquals(Period.between(LocalDate.of(1988, 7, 4), today).getYears(), age);
            assertEquals(LocalDate.of(2029, 7, 4).isBefore(today) ? 1 : 0, expired);
            assertEquals(Scrivlet.OK, parser.parse(ScrivletTest.sample("national-south-africa"), new ScrivletResult()));
            assertEquals("no expiry date", 2, parser.isExpired());
            return;
        }
        fail("the day changed on every attempt");
    }

    @Test
    public void aClosedParserAnswersNothing() {
        parser.close();
        Runnable[] questions = {
            parser::getFormat, parser::getFormatName, parser::getFieldCount, parser::getElements,
            () -> parser.getElement("DAQ"), parser::getCheckDigitStatus, parser::getCheckDigitFailures,
            parser::getAge, parser::isExpired, parser::getRepairs, parser::getResultJson,
            () -> parser.parseLenient(new byte[] {'@'}, new ScrivletResult()),
        };
        for (Runnable question : questions) {
            try {
                question.run();
                fail("a closed parser answered");
            } catch (IllegalStateException expected) {
                // as parse does
            }
        }
        parser = new Scrivlet();
    }
}
