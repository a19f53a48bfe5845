// Parses one scanned input leniently and prints the format, a few fields, the raw
// elements and the JSON object.
//
//   javac -cp orvane-parser.jar ReadDocument.java
//   java -Dorvane.parser.library=/usr/local/lib/liborvane_parser.so -cp orvane-parser.jar:. ReadDocument scan.txt
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.Map;
import net.orvane.scrivlet.Scrivlet;
import net.orvane.scrivlet.ScrivletResult;

public class ReadDocument {
    public static void main(String[] args) throws Exception {
        byte[] input = Files.readAllBytes(Paths.get(args[0]));
        try (Scrivlet parser = new Scrivlet()) {
            ScrivletResult result = new ScrivletResult();
            int status = parser.parseLenient(input, result);
            if (status != Scrivlet.OK) {
                System.out.println("not recognised (status " + status + ")");
                System.exit(1);
            }
            System.out.println("format " + parser.getFormat() + ": " + parser.getFormatName());
            System.out.println("name: " + result.firstName + " " + result.lastName + ", born " + result.birthdate);
            if (!parser.getRepairs().isEmpty()) System.out.println("repaired: " + parser.getRepairs());
            for (Map.Entry<String, String> element : parser.getElements().entrySet()) {
                System.out.println("  " + element.getKey() + " = " + element.getValue());
            }
            System.out.println(parser.getResultJson());
        }
    }
}
