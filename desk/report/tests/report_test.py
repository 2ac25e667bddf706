"""The page of a report in a browser, held against what dtv-show says of the same capture.

usage: report_test.py BUILD

Leaves screenshots in the folder screenshots/ of the build.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[2]
sys.path.insert(0, str(ROOT / "desk" / "show" / "tests"))
import axe  # noqa: E402
from browser import Browser  # noqa: E402
from capture_file import COMMAND, EVENT, REFUSED, Capture  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402

BUILD = pathlib.Path(sys.argv[1]).resolve()
REPORT, SHOW = BUILD / "bin" / "dtv-report", BUILD / "bin" / "dtv-show"
FIELD_LOG = ROOT / "docs" / "field" / "receiver.log.gz"
SCREENSHOTS = BUILD / "screenshots"
CREATE, CREATE_REPLY = 0x10000000, 0x1000004f
LNA, LNA_REPLY, SENSITIVITY = 0x1000001a, 0x10000065, 0x1000008f


def report(*arguments, status=0):
    done = subprocess.run([REPORT, *arguments], capture_output=True, text=True, timeout=120, check=False)
    if done.returncode != status:
        raise AssertionError(f"{arguments}: status {done.returncode}: {done.stderr}")
    return done


def shown(capture, *options):
    return json.loads(subprocess.run([SHOW, "--json", *options, capture], capture_output=True, text=True,
                                     timeout=120, check=True).stdout)


def many_messages(count):
    """A capture of that many messages: commands, their replies, and the signal."""
    capture = Capture()
    capture.add(COMMAND, CREATE, bytes(4))
    capture.add(EVENT, CREATE_REPLY, b"\1\0\0\0\0\0\0\0", thread=11, name=b"DtvEvent-1")
    for n in range((count - 2) // 4):
        capture.now += 10**7
        capture.add(COMMAND, LNA, b"\1\0\1\0")
        capture.now += 10**5 * (n % 50)
        capture.add(EVENT, LNA_REPLY, b"\1\0\0\0" + bytes([n % 100 == 0, 0, 0, 0]), thread=11, name=b"DtvEvent-1")
        for _ in range(2):
            capture.add(EVENT, SENSITIVITY, b"\1\0\0\0" + bytes(12) + (1000 + n % 700).to_bytes(4, "little"),
                        thread=12, name=b"DtvEvent-2")
    return capture


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(FOLDER)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)
        cls.capture = cls.folder / "evening.pcapng"
        cls.page = cls.folder / "evening.html"
        report("--output", cls.page, cls.capture, cls.folder / "evening.log")
        cls.field = cls.folder / "field.html"
        report("--output", cls.field, FIELD_LOG)
        cls.messages = shown(cls.capture)["messages"]

    def tearDown(self):
        self.assertEqual([], self.browser.errors())

    def rows(self):
        """The numbers of the listed messages, as the page knows them."""
        return self.browser.run("return report.list.indexes.map((i) => report.session.messages.number[i])")

    def filter(self, text):
        box = self.browser.find("#filter")
        box.send_keys(Keys.CONTROL, "a")
        box.send_keys(text or Keys.DELETE)
        return self.rows()

    def test_opens_without_a_request(self):
        self.browser.open(self.page)
        self.assertEqual([], self.browser.requests())
        self.assertIn("evening.pcapng", self.browser.text("h1"))
        self.assertIn(f"{len(self.messages)} messages in ", self.browser.text("#summary"))

    def test_the_page_is_small(self):
        capture = self.folder / "small.pcapng"
        many_messages(2).write(capture)
        report("--output", self.folder / "small.html", capture)
        self.assertLess((self.folder / "small.html").stat().st_size, 600_000)

    def test_every_field_is_as_dtv_show_says(self):
        self.browser.open(self.page)
        fields = self.browser.run("""
            return report.session.data.messages.number.map((number, i) => ({
                number, name: report.session.name(i), thread: report.session.threadName(i), kind: report.session.kind(i),
                partner: report.session.messages.partner[i], latency: report.session.latency[i],
                fields: Object.fromEntries(report.session.fields(i).filter((field) => !field.isRecord)
                    .map((field) => [field.path, field.value])) }));""")
        self.assertEqual(len(self.messages), len(fields))
        for expected, got in zip(self.messages, fields):
            self.assertEqual((expected["number"], expected["name"], expected["thread"], expected["kind"]),
                             (got["number"], got["name"], got["thread"], got["kind"]))
            self.assertEqual(expected.get("partner", 0), got["partner"])
            if expected.get("partner"):
                self.assertEqual(expected["latency_ns"], got["latency"])
            self.assertEqual(flat(expected.get("fields", {})), got["fields"], expected["name"])

    def test_java_objects_are_those_that_the_bridge_makes(self):
        trees = self.folder / "trees"
        subprocess.run([next(BUILD.rglob("event_trees_test"))], check=True, capture_output=True, timeout=120,
                       env={**os.environ, "DTV_EVENT_TREES": str(trees), "DTV_TEST_MODE": "plain"})
        capture, expected = Capture(), []
        for line in trees.read_text(encoding="utf-8").splitlines():
            event, callback = line.split(" : ", 1)
            number, *record = event.split()
            capture.add(EVENT, int(number), bytes.fromhex("".join(record)), thread=11, name=b"DtvEvent-1")
            expected.append(callback.split(" ", 1)[1])
        path, page = self.folder / "trees.pcapng", self.folder / "trees.html"
        capture.write(path)
        report("--output", page, path)
        self.browser.open(page)
        shown_trees = self.browser.run("return report.session.data.messages.number.map((_, i) => report.javaText(i))")
        self.assertGreater(len(expected), 81 * 15)
        for want, got in zip(expected, shown_trees, strict=True):
            self.assertEqual(want, got)

    def test_the_list_shows_what_the_filter_asks_for(self):
        self.browser.open(self.page)
        by_number = {message["number"]: message for message in self.messages}
        for text, test in (
            ("selectchannel", lambda each: "selectchannel" in each["name"].lower()),
            ("event thread:DtvEvent-1", lambda each: each["kind"] == "event" and each["thread"] == "DtvEvent-1"),
            ("handle 2", lambda each: each.get("session") == 2),
            ("slower than 100 us", lambda each: each.get("latency_ns", 0) > 100_000),
            ("0x10000091", lambda each: each["id"] == "0x10000091"),
            ("zzz", lambda each: False),
            ("", lambda each: True),
        ):
            with self.subTest(text):
                expected = [number for number, message in by_number.items() if test(message)]
                self.assertEqual(expected, self.filter(text))
                self.assertEqual(f"{len(expected)} of {len(by_number)} messages", self.browser.text("#shown"))
        failed = self.filter("failed")
        replies = [number for number, message in by_number.items() if message["kind"] == "event" and
                   message.get("partner") and message["fields"].get("result")]
        self.assertLessEqual(set(replies), set(failed))

    def test_a_link_shows_the_same_view(self):
        self.browser.open(self.page)
        self.filter("epg")
        self.browser.find("#list").send_keys(Keys.END)
        self.browser.find("#tab-state").click()
        address = self.browser.find("#link").get_attribute("href")
        title, listed = self.browser.run("return report.chosen"), self.rows()
        self.browser.open(self.page, address[address.index("#"):])
        self.assertEqual(title, self.browser.run("return report.chosen"))
        self.assertEqual(listed, self.rows())
        self.assertEqual("true", self.browser.find("#tab-state").get_attribute("aria-selected"))

    def test_the_keyboard_is_enough(self):
        self.browser.open(self.page)
        self.browser.find("#list").send_keys(Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertEqual("#3 SetFirstComponent", self.browser.text("#message-title"))
        self.assertEqual("message-3", self.browser.find("#list").get_attribute("aria-activedescendant"))
        self.browser.find("#tab-message").send_keys(Keys.ARROW_RIGHT)
        self.assertTrue(self.browser.find("#panel-state").is_displayed())
        canvas = self.browser.find("#lanes-canvas")
        whole = self.browser.text("#lanes-range")
        canvas.send_keys("+", Keys.ARROW_RIGHT)
        self.assertNotEqual(whole, self.browser.text("#lanes-range"))
        canvas.send_keys(Keys.HOME)
        self.assertEqual(whole, self.browser.text("#lanes-range"))
        canvas.send_keys(Keys.ARROW_DOWN)
        self.assertEqual(4, self.browser.run("return report.session.messages.number[report.chosen]"))

    def test_a_field_and_its_bytes_mark_one_another(self):
        self.browser.open(self.page, "#message=3&show=message")
        row = self.browser.find("#fields tr[data-from='10'][data-to='12']")
        self.browser.run("arguments[0].focus()", row)
        lit = [cell.get_attribute("data-at") for cell in self.browser.all("#bytes .lit")]
        self.assertEqual(["10", "11"], lit)
        self.assertIn("surface_height", row.text)

    def test_the_lines_of_the_log_are_those_of_the_call(self):
        self.browser.open(self.page, "#message=3&show=message")
        lines = self.browser.text("#lines").splitlines()
        self.assertIn("dtvSvLibSetFirstComponent", lines[0])
        self.assertTrue(any("FUNCEND" in line and "dtvSvLibSetFirstComponent" in line for line in lines))

    def test_state_and_screen_follow_the_messages(self):
        chosen = next(message for message in self.messages if message["name"] == "SelectChannelReply")
        channel = chosen["fields"]["physical_channel"]
        self.browser.open(self.page, f"#message={chosen['number']}&show=state")
        changed = self.browser.text("#panel-state tr.changed")
        self.assertEqual(f"receives channel {channel}, service {chosen['fields']['service_no']}", changed)
        self.browser.find("#tab-screen").click()
        self.assertIn(f"channel {channel}", self.browser.text("#screen-words"))
        self.assertEqual(3, len(self.browser.all("#panel-screen rect.plane")))

    def test_a_click_on_a_plot_leads_to_the_message(self):
        self.browser.open(self.page, "#show=plots")
        for title in ("C/N, dB", "Time to the reply, ms", "Messages a second"):
            self.assertIn(title, self.browser.text("#panel-plots"))
        self.browser.run("document.querySelector('#panel-plots circle').dispatchEvent(new MouseEvent('click'))")
        self.assertEqual("ReceiveSensitivityNotify", self.browser.run("return report.session.name(report.chosen)"))

    def test_findings_lead_to_their_place(self):
        self.browser.open(self.field)
        self.assertEqual([], self.browser.requests())
        self.assertIn("15 commands had no answer", self.browser.text("#findings-list"))
        self.browser.find("#findings-list button").click()
        self.assertEqual("ControlScreenDisplay", self.browser.run("return report.session.name(report.chosen)"))
        self.assertEqual(12, len(self.filter("unanswered")))

    def test_a_hundred_thousand_messages_open_in_two_seconds(self):
        capture = self.folder / "many.pcapng"
        many_messages(100_000).write(capture)
        page = self.folder / "many.html"
        report("--output", page, capture)
        self.browser.driver.get("about:blank")
        began = time.monotonic()
        self.browser.open(page)
        print(f"100,000 messages: open in {time.monotonic() - began:.2f} s, page of {page.stat().st_size:,} bytes")
        filtering = self.browser.run("""
            const began = performance.now();
            document.getElementById("filter").value = "failed slower than 1 ms";
            report.filter();
            return performance.now() - began;""")
        scrolling = self.browser.run("""
            const began = performance.now();
            for (let n = 0; n < 100; ++n) {
                report.list.box.scrollTop = n * 1000;
                report.list.draw();
            }
            return (performance.now() - began) / 100;""")
        print(f"a filter takes {filtering:.0f} ms, a step of scrolling {scrolling:.1f} ms")
        self.assertEqual([], self.rows())
        self.assertEqual(250, len(self.filter("failed")))

    def test_people_of_all_kinds_can_use_it(self):
        code = axe.script(BUILD)
        for scheme in ("light", "dark"):
            self.browser.scheme(scheme)
            for tab in ("message", "state", "screen", "plots"):
                with self.subTest(f"{scheme} {tab}"):
                    self.browser.open(self.page, f"#message=40&show={tab}")
                    self.assertEqual([], axe.violations(self.browser, code))
        self.browser.scheme("light")

    def test_looks_the_same_in_light_and_dark_and_narrow(self):
        SCREENSHOTS.mkdir(exist_ok=True)
        for scheme in ("light", "dark"):
            self.browser.scheme(scheme)
            for width in (1280, 400):
                self.browser.open(self.page, "#message=40&show=message", width=width)
                self.browser.screenshot(SCREENSHOTS / f"report-{scheme}-{width}.png")
                wide = self.browser.run("return document.documentElement.scrollWidth - document.documentElement.clientWidth")
                self.assertLessEqual(wide, 0, f"{scheme} {width}")
        self.browser.scheme("light")


class Program(unittest.TestCase):
    def test_refuses_what_it_cannot_read(self):
        folder = pathlib.Path(FOLDER)
        (folder / "empty").write_bytes(b"")
        output = folder / "none.html"
        for arguments, status, text in (
            ([], 2, "no file is given"),
            (["/no/such/file"], 2, "cannot open /no/such/file"),
            ([folder], 2, "is a directory"),
            ([folder / "empty"], 1, "no line of it is the bridge's"),
            ([folder / "evening.pcapng", folder / "evening.pcapng"], 1, "are of one kind"),
            ([folder / "evening.pcapng", FIELD_LOG, FIELD_LOG], 2, "at most"),
            (["--what", FIELD_LOG], 2, "unknown option --what"),
        ):
            done = report("--output", output, *arguments, status=status)
            self.assertIn(text, done.stderr)
            self.assertFalse(output.exists())
        done = report("--output", "/dev/full", FIELD_LOG, status=2)
        self.assertIn("/dev/full", done.stderr)

    def test_a_damaged_capture_is_shown_as_far_as_it_goes(self):
        folder = pathlib.Path(FOLDER)
        whole = (folder / "evening.pcapng").read_bytes()
        (folder / "cut.pcapng").write_bytes(whole[:len(whole) // 2])
        done = report("--output", folder / "cut.html", folder / "cut.pcapng", status=1)
        self.assertIn("cut.pcapng: ", done.stderr)
        self.assertTrue((folder / "cut.html").exists())

    def test_texts_of_any_bytes_do_no_harm(self):
        capture = Capture()
        capture.add(COMMAND, CREATE, bytes(4), name=b"</script><b>\xff")
        capture.add(EVENT, CREATE_REPLY, b"\1\0\0", thread=11, name=b"")
        capture.add(REFUSED, CREATE_REPLY, value=1, size=3, thread=11, name=b"")
        capture.add(9, 0x7fffffff, b"abc", thread=11, name=b"")
        path = pathlib.Path(FOLDER) / "odd.pcapng"
        capture.write(path)
        report("--output", FOLDER + "/odd.html", path)
        browser = Browser()
        try:
            browser.open(FOLDER + "/odd.html")
            self.assertEqual([], browser.errors())
            self.assertEqual(4, browser.run("return report.session.count"))
            self.assertEqual([], browser.all("b"))
            for number in range(1, 5):
                browser.run(f"report.choose({number - 1})")
            self.assertEqual([], browser.errors())
        finally:
            browser.close()


def flat(fields, path=""):
    """The fields of a record by their paths."""
    result = {}
    for name, value in fields.items():
        if isinstance(value, dict):
            result |= flat(value, f"{path}{name}.")
        elif isinstance(value, list) and value and isinstance(value[0], dict):
            for n, each in enumerate(value):
                result |= flat(each, f"{path}{name}[{n}].")
        elif isinstance(value, list):
            result |= {f"{path}{name}[{n}]": each for n, each in enumerate(value)}
        else:
            result[path + name] = value
    return result


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as FOLDER:
        subprocess.run([ROOT / "run", "--build", BUILD, "--quiet", "--seed", "20", "--capture",
                        os.path.join(FOLDER, "evening.pcapng"), "--trace", os.path.join(FOLDER, "evening.log")],
                       check=True, timeout=120, stdin=subprocess.DEVNULL)
        unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
