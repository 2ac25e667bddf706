package rows;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import rows.ServiceJars.Outcome;

/**
 * Compares the rows with jars that differ from the service's, and with what is no jar.
 *
 * <pre>JarsTest SCRATCH ROWS JAR SOURCES</pre>
 */
public final class JarsTest {
    private static final String PROXY = ServiceJars.SERVICE + "DtvServerProxy";
    private static final String CALLBACKS = ServiceJars.SERVICE + "BGCallBack";
    private static final String RESULT = ServiceJars.SERVICE + "type/BG_TE_DTVSVLIB_RESULT";
    private static final String CREATE = "public native BG_TE_DTVSVLIB_RESULT DtvSvLib_Create(";
    private static final String SURFACE = "android/view/Surface";

    private final Path rows;
    private final Path jar;
    private final String numbers;
    private final ServiceJars made;
    private int checked;
    private int failed;

    private JarsTest(String[] arguments) throws IOException {
        rows = Path.of(arguments[1]);
        jar = Path.of(arguments[2]);
        made = new ServiceJars(jar, Path.of(arguments[3]), Path.of(arguments[0]));
        numbers = Files.readString(Path.of(arguments[4]));
    }

    public static void main(String[] arguments) throws IOException {
        JarsTest test = new JarsTest(arguments);
        test.theServicesOwn();
        test.whatIsNoJar();
        test.damagedClasses();
        test.surface();
        test.natives();
        test.callbacks();
        test.constructors();
        test.fields();
        test.rowsThemselves();
        System.out.println(test.checked + " checked, " + test.failed + " failed");
        System.exit(test.failed == 0 && test.checked > 0 ? 0 : 1);
    }

    private void expect(String what, Outcome outcome, int status, String... texts) {
        ++checked;
        String all = outcome.out() + outcome.err();
        if (outcome.status() != status || !Arrays.stream(texts).allMatch(all::contains)) {
            ++failed;
            System.err.println(what + ": status " + outcome.status() + "\n" + all
                    + "  expected: status " + status + " " + Arrays.toString(texts));
        }
    }

    /** A kind of rows and how many there are, as the tests' header states it. */
    private String stated(String kind, String constant) {
        Matcher found = Pattern.compile("constexpr int " + constant + " = (\\d+);").matcher(numbers);
        if (!found.find()) {
            throw new IllegalStateException("the header does not state " + constant);
        }
        return kind + " " + found.group(1);
    }

    private void theServicesOwn() {
        expect("the service's own jar", ServiceJars.compare(rows, jar), 0,
                stated("NATIVE", "nativeCount"), stated("CALLBACK", "callbackCount"),
                stated("CLASS", "classCount"), "FIELD 77", "GETTER 26");
        expect("no jar", ServiceJars.compare(rows), 2, "usage:");
    }

    private void whatIsNoJar() throws IOException {
        byte[] bytes = {1, 2, 3};
        expect("classes.dex alone",
                ServiceJars.compare(rows, made.jarOf(Map.of("classes.dex", bytes))), 2,
                "this jar holds no class files, only what was converted to .dex");
        expect("resources alone",
                ServiceJars.compare(rows, made.jarOf(Map.of("META-INF/MANIFEST.MF", bytes))), 2,
                "this jar holds no class files\n");
        expect("a text", ServiceJars.compare(rows, made.textOf("text")), 2, "this is not a jar");
        expect("a jar that is missing", ServiceJars.compare(rows, Path.of("/missing.jar")), 2,
                "/missing.jar: there is no such file");
        expect("a platform's jar that is missing",
                ServiceJars.compare(rows, jar, Path.of("/missing.jar")), 2,
                "/missing.jar: there is no such file");
    }

    private void damagedClasses() throws IOException {
        Map<String, byte[]> entries = made.entries();
        byte[] whole = entries.get(PROXY + ".class");
        entries.put(PROXY + ".class", Arrays.copyOf(whole, whole.length / 2));
        expect("half a class file", ServiceJars.compare(rows, made.jarOf(entries)), 2,
                "(" + PROXY + ".class): the class file is cut short");
        byte[] unknown = whole.clone();
        unknown[10] = 99;
        entries.put(PROXY + ".class", unknown);
        expect("an unknown constant", ServiceJars.compare(rows, made.jarOf(entries)), 2,
                "constant 1 is of the unknown kind 99");
        entries.put(PROXY + ".class", "import java;".getBytes(StandardCharsets.UTF_8));
        expect("a text in place of a class", ServiceJars.compare(rows, made.jarOf(entries)), 2,
                "no class file: it begins with 0x696D706F");
        entries.put(PROXY + ".class", entries.get(CALLBACKS + ".class"));
        expect("another class", ServiceJars.compare(rows, made.jarOf(entries)), 2,
                "it declares " + CALLBACKS);
        // A later version of the format than the VM's own.
        byte[] later = whole.clone();
        later[7] = 127;
        entries.put(PROXY + ".class", later);
        expect("a later version", ServiceJars.compare(rows, made.jarOf(entries)), 0,
                stated("NATIVE", "nativeCount"));
        anyByte(whole);
    }

    /** A class file with any byte changed is read, or refused with an IOException. */
    private void anyByte(byte[] whole) {
        for (int i = 0; i < whole.length; ++i) {
            byte[] damaged = whole.clone();
            damaged[i] ^= (byte) 0xFF;
            try {
                ClassFile.read(new ByteArrayInputStream(damaged));
            } catch (IOException e) {
                continue;
            } catch (RuntimeException e) {
                ++failed;
                System.err.println("byte " + i + " changed: " + e);
            }
        }
        ++checked;
    }

    private void surface() throws IOException {
        Map<String, byte[]> entries = made.entries();
        byte[] surface = entries.remove(SURFACE + ".class");
        Path service = made.jarOf(entries);
        expect("no Surface", ServiceJars.compare(rows, service), 1,
                "binding/class_table.def:",
                "error: there is no class android/view/Surface, and no jar of the platform's "
                        + "classes is given (DTV_JAVA_FRAMEWORK)");
        Path platform = made.jarOf(Map.of(SURFACE + ".class", surface));
        expect("Surface in a jar of its own", ServiceJars.compare(rows, service, platform), 0,
                stated("CLASS", "classCount"));
        expect("Surface in no jar that is given", ServiceJars.compare(rows, service, service), 1,
                "error: there is no class android/view/Surface\n");
    }

    private void natives() throws IOException {
        String source = PROXY + ".java";
        String place = "(" + PROXY + ".class): error: native method DtvServerProxy.";
        expect("a native without a row", ServiceJars.compare(rows, made.jarWith(source, CREATE,
                "native void DtvSvLib_Extra(byte[] data, long[][] times); " + CREATE)), 1,
                place + "DtvSvLib_Extra([B[[J)V has no row in ", "commands/native_table.def\n");
        expect("an overload without a row", ServiceJars.compare(rows, made.jarWith(source, CREATE,
                "native void DtvSvLib_Create(); " + CREATE)), 1,
                place + "DtvSvLib_Create()V has no row in ");
        expect("a row without its native", ServiceJars.compare(rows, made.jarWith(source,
                "public native BG_TE_DTVSVLIB_RESULT DtvSvLib_PausePlay(int handle);", "")), 1,
                "commands/native_table.def:",
                "error: DtvServerProxy has no method DtvSvLib_PausePlay");
        expect("a native of another name", ServiceJars.compare(rows, made.jarWith(source,
                "DtvSvLib_PausePlay(", "DtvSvLib_PausePley(")), 1,
                "has no method DtvSvLib_PausePlay, it has DtvSvLib_PausePley",
                place + "DtvSvLib_PausePley(I)L");
        expect("other types", ServiceJars.compare(rows, made.jarWith(source,
                "DtvSvLib_Create(int", "DtvSvLib_Create(long")), 1,
                "error: DtvServerProxy.DtvSvLib_Create has (JI)L" + RESULT
                        + ";, the row says (II)L" + RESULT + ";\n");
        expect("a static native", ServiceJars.compare(rows, made.jarWith(source, CREATE,
                CREATE.replace("native", "static native"))), 1,
                "error: DtvServerProxy.DtvSvLib_Create is static, the row says of an instance");
        expect("a method that is not native", ServiceJars.compare(rows, made.jarWith(source,
                "native BG_TE_DTVSVLIB_RESULT DtvSvLib_PausePlay(int handle);",
                "BG_TE_DTVSVLIB_RESULT DtvSvLib_PausePlay(int handle) { return null; }")), 1,
                "error: DtvServerProxy.DtvSvLib_PausePlay(I)L" + RESULT + "; is not native");
        Map<String, byte[]> entries = made.entries();
        byte[] proxy = entries.remove(PROXY + ".class");
        entries.put("elsewhere/DtvServerProxy.class", proxy);
        expect("a proxy elsewhere", ServiceJars.compare(rows, made.jarOf(entries)), 1,
                "error: there is no class " + PROXY + ", there is elsewhere/DtvServerProxy");
    }

    private void callbacks() throws IOException {
        String source = CALLBACKS + ".java";
        String create = "public static void onEvDtvsvCreateReply(";
        String event = ServiceJars.SERVICE + "events/notify/BG_EV_NEW";
        Map<String, byte[]> entries = made.entries();
        entries.putAll(made.compile(Map.of(
                event + ".java",
                "package tenrik.service.dtvserver.events.notify; public class BG_EV_NEW {}",
                source, made.changed(source, create, "public static void onEvNew("
                        + event.replace('/', '.') + " event) {} " + create))));
        expect("a new event", ServiceJars.compare(rows, made.jarOf(entries)), 1,
                "(" + CALLBACKS + ".class): error: callback BGCallBack.onEvNew(L" + event
                        + ";)V has no row in ", "binding/class_table.def\n",
                "(" + event + ".class): error: the class is what BGCallBack.onEvNew takes, and has"
                        + " no row in ");
        expect("a callback of an instance", ServiceJars.compare(rows, made.jarWith(source, create,
                create.replace("static ", ""))), 1, "binding/class_table.def:",
                "error: BGCallBack.onEvDtvsvCreateReply is of an instance, the row says static");
        expect("a callback that returns something", ServiceJars.compare(rows,
                made.jarWith(source, create, "static int onEvDtvsvCreateReply(int i) "
                        + "{ return 0; } private static void other(")), 1,
                "error: BGCallBack.onEvDtvsvCreateReply has (I)I, the row says (L");
        // A helper of the Java side is its own affair.
        expect("another static method", ServiceJars.compare(rows, made.jarWith(source, create,
                "static void onEmpty(int i) {} " + create)), 0,
                stated("CALLBACK", "callbackCount"));
    }

    private void constructors() throws IOException {
        String event = ServiceJars.SERVICE + "events/response/BG_EV_DTVSV_CREATE_REPLY";
        String second = "int result) { public BG_EV_DTVSV_CREATE_REPLY() { this(0, 0); }";
        expect("a constructor of other types", ServiceJars.compare(rows,
                made.jarWith(event + ".java", "int result", "long result")), 1,
                "binding/class_table.def:", "error: BG_EV_DTVSV_CREATE_REPLY.<init> has (IJ)V, the"
                        + " row says (II)V");
        expect("one constructor more", ServiceJars.compare(rows, made.jarWith(event + ".java",
                "int result) {", second)), 0, "CONSTRUCTOR 136");
        Map<String, byte[]> entries = made.entries();
        entries.remove(event + ".class");
        expect("a class that is missing", ServiceJars.compare(rows, made.jarOf(entries)), 1,
                "binding/class_table.def:", "error: there is no class " + event + "\n");
    }

    private void fields() throws IOException {
        String skip = ServiceJars.SERVICE + "type/BG_TS_DTVSVLIB_SKIP_PLAY";
        expect("a field of another type", ServiceJars.compare(rows,
                made.jarWith(skip + ".java", "int skipsec", "long skipsec")), 1,
                "commands/field_table.def:",
                "error: BG_TS_DTVSVLIB_SKIP_PLAY.skipsec has J, the row says I\n");
        expect("a field of another name", ServiceJars.compare(rows,
                made.jarWith(skip + ".java", "int skipsec", "int skipSec")), 1,
                "error: BG_TS_DTVSVLIB_SKIP_PLAY has no field skipsec, it has skipSec\n");
        expect("a static field", ServiceJars.compare(rows, made.jarWith(skip + ".java",
                "int skipsec) {", "int seconds) { static int skipsec;")), 1,
                "error: BG_TS_DTVSVLIB_SKIP_PLAY.skipsec is static, the row says of an instance");

        String direction = "BG_TE_DTVSVLIB_PLAY_DIRECTION";
        Map<String, byte[]> entries = made.entries();
        entries.putAll(made.compile(Map.of(
                "base/Skip.java", "package base; public class Skip { private int skipsec; }",
                skip + ".java", "package tenrik.service.dtvserver.type;"
                        + "public class BG_TS_DTVSVLIB_SKIP_PLAY extends base.Skip {"
                        + direction + " direction; }")));
        expect("an inherited field", ServiceJars.compare(rows, made.jarOf(entries)), 0, "FIELD ");
        entries.remove("base/Skip.class");
        expect("a field of a class that is in no jar",
                ServiceJars.compare(rows, made.jarOf(entries)), 1,
                "error: BG_TS_DTVSVLIB_SKIP_PLAY has no field skipsec (its superclass base/Skip is"
                        + " in no jar that is given)");

        String onOff = ServiceJars.SERVICE + "type/BG_TE_DTVSVLIB_ONOFF.java";
        expect("a getter of an instance", ServiceJars.compare(rows, made.jarWith(onOff,
                "static int getOnOffValue", "int getOnOffValue")), 1,
                "commands/field_table.def:", "error: BG_TE_DTVSVLIB_ONOFF.getOnOffValue is of an"
                        + " instance, the row says static");
        expect("a getter of another result", ServiceJars.compare(rows, made.jarWith(onOff,
                "static int getOnOffValue", "static long getOnOffValue")), 1,
                "BG_TE_DTVSVLIB_ONOFF;)J, the row says (L");
        expect("a result of another name", ServiceJars.compare(rows, made.jarWith(RESULT + ".java",
                "DTVSVLIB_RESULT_CANCEL(2)", "DTVSVLIB_RESULT_CANCELED(2)")), 1,
                "error: BG_TE_DTVSVLIB_RESULT has no field DTVSVLIB_RESULT_CANCEL, it has"
                        + " DTVSVLIB_RESULT_CANCELED\n");
    }

    private void rowsThemselves() throws IOException {
        String text = Files.readString(rows);
        String create = text.lines().filter(line -> line.contains("\"Create\" |"))
                .findFirst().orElseThrow();
        expect("a row twice", ServiceJars.compare(made.textOf(text + create), jar), 1,
                "error: DtvServerProxy.DtvSvLib_Create(II)L" + RESULT + "; has a row already, at ");
        expect("an empty file", ServiceJars.compare(made.textOf(""), jar), 2,
                "there are no rows to compare");
        expect("natives alone", ServiceJars.compare(made.textOf(create), jar), 2,
                "there is no row of the kind CLASS");
        expect("a row that does not end", ServiceJars.compare(made.textOf(
                text + create.replace("instance;", "instance")), jar), 2, "a row lacks ';'");
        expect("a text that does not end",
                ServiceJars.compare(made.textOf(text + "\nBRIDGE_ROW | native | \"a"), jar), 2,
                "a text of a row does not end");
        expect("an unknown kind", ServiceJars.compare(made.textOf(
                text + create.replace("native |", "odd |")), jar), 2, "a row is damaged: odd | ");
        expect("no such file", ServiceJars.compare(Path.of("/missing.txt"), jar), 2,
                "/missing.txt: cannot be read");
    }
}
