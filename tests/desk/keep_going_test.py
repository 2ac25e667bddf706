"""The evening that is continued after a difference: what it lists, and what it plays all the same."""
import json
import time
import unittest

from desk import DeskTest


class KeepGoing(DeskTest):
    def evening(self, script=None, *arguments):
        """The figures of an evening with a script. It lists something exactly when it fails."""
        more = []
        if script is not None:
            path = self.folder / "script.json"
            path.write_text(json.dumps({"version": 1, **script}))
            more = ["--script", path]
        run = self.run_desk("evening", "--keep-going", "--json", "--seed", "20", *more, *arguments)
        figures = json.loads(run.stdout)
        self.assertEqual(bool(figures["differences"] or figures["left_out"]), run.returncode == 1)
        self.assertEqual(figures["ok"], run.returncode == 0)
        self.assertEqual("" if figures["ok"] else f"run: {figures['failure']}\n", run.stderr)
        return figures

    def listed(self, figures):
        return [(one["part"], one["command"], one["expected"], one["came"])
                for one in figures["differences"]]

    def test_a_service_as_it_should_be(self):
        figures = self.evening()
        self.assertEqual(([], [], []),
                         (figures["differences"], figures["left_out"], figures["rules"]))
        self.assertEqual(66, figures["replies"])
        self.assertEqual([], figures["natives"]["missing"])

    def test_it_is_the_same_evening(self):
        text = [self.run_desk("evening", "--seed", "20", *more).stdout
                for more in ([], ["--keep-going"])]
        lines = [part.split("\n== What the evening did")[0] for part in text]
        self.assertEqual(lines[0], lines[1])
        self.assertIn("\nwhat differed           0\n", text[1])

    def test_one_refusal_is_one_difference(self):
        figures = self.evening({"commands": [{"command": "SetCapDisplay", "result": 7}]})
        self.assertEqual([{"part": "Planes", "what": "Place the captions",
                           "command": "SetCapDisplay",
                           "event": "BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY", "expected": "result 0",
                           "came": "result 7", "times": 1}], figures["differences"])
        self.assertEqual([], figures["left_out"])
        self.assertEqual([], figures["natives"]["missing"])
        self.assertEqual([{"rule": "commands[0]", "message": "SetCapDisplay", "acted": 1}],
                         figures["rules"])
        self.assertEqual("1 difference, the first: Place the captions: result 0 should have come, "
                         "and result 7 came.", figures["failure"])

    def test_what_needs_a_lost_answer_is_left_out(self):
        figures = self.evening({"commands": [{"command": "StartRec", "nth": 2, "answer": False}]})
        self.assertEqual([("Recording", "StartRec", "BG_EV_DTVSV_START_REC_REPLY", "none")],
                         self.listed(figures))
        self.assertEqual([("The rest of Recording", "it cannot be continued without that answer"),
                          ("Playback", "it needs a recording, and none was kept")],
                         [(one["part"], one["why"]) for one in figures["left_out"]])
        self.assertNotIn("TerminateRec_Sync", figures["natives"]["missing"])
        self.assertIn("StartPlay", figures["natives"]["missing"])

    def test_a_send_that_fails(self):
        figures = self.evening({"commands": [{"command": "ControlCap_Sync", "send_result": -1},
                                             {"command": "BMLKeyEventNotify",
                                              "send_result": -1}]})
        # Captions that were not suspended cannot be resumed.
        self.assertEqual([("Captions", "ControlCap_Sync", "0", "1"),
                          ("Captions", "ControlCap", "result 0", "result 1"),
                          ("Captions", "ControlCap", "BG_EV_DTVSV_CAP_STATUS_NOTIFY", "none"),
                          ("Data broadcasting", "BMLKeyEventNotify", "that it is taken",
                           "DTVSVLIB_RESULT_NG")], self.listed(figures))
        self.assertEqual([], figures["natives"]["missing"])

    def test_a_request_whose_answer_is_not_taken(self):
        figures = self.evening({"commands": [{"command": "BMLFepReply", "send_result": -1}]})
        self.assertEqual([("Data broadcasting", "BMLFepReply")] * 2,
                         [one[:2] for one in self.listed(figures)])
        self.assertEqual(["The rest of Data broadcasting"],
                         [one["part"] for one in figures["left_out"]])

    def test_a_late_answer_loses_nothing(self):
        figures = self.evening({"commands": [
            {"command": "ControlLNA", "delay_ms": 1500},
            {"command": "SetTunerLog", "nth": 1, "delay_ms": 500},
            {"command": "ControlCap_Sync", "delay_ms": 2000}]})
        self.assertEqual([("Captions", "ControlCap_Sync", "an answer within 1000 ms",
                           "one after 2000 ms"),
                          ("Signal", "ControlLNA", "an answer within 1000 ms",
                           "one after 1505 ms")], self.listed(figures))
        self.assertEqual([], figures["left_out"])
        self.assertEqual([], figures["natives"]["missing"])

    def test_what_is_not_cancelled_ends_by_itself(self):
        figures = self.evening({"commands": [{"command": "CancelSearchChannel", "answer": False},
                                             {"command": "CancelScan", "answer": False}]})
        self.assertEqual([("Tuning", "CancelScan", "that it is in time", "an end without it"),
                          ("Watching", "CancelSearchChannel", "that it is in time",
                           "an end without it")], self.listed(figures))
        self.assertEqual([], figures["left_out"])

    def test_events_that_are_lost_copied_or_unexpected(self):
        figures = self.evening({
            "records": [{"event": "CaInfoNotify", "nth": 1, "drop": True},
                        {"event": "ComponentInfoNotify", "nth": 2, "copies": 3},
                        {"event": "ServiceInfoNotify", "nth": 1, "fields": {"svc_cnt": 255}}],
            "events": [{"after": "ControlLNA", "event": "BmlMailReq", "delay_ms": 5},
                       {"after": "ControlLNA", "event": 305419896, "bytes": {"hex": "01"}}]})
        events = {one["event"]: (one["expected"], one["came"]) for one in figures["differences"]
                  if one["part"] == "Events"}
        self.assertEqual(
            {"BG_EV_DTVSV_CA_INFO_NOTIFY", "BG_EV_DTVSV_COMPONENT_INFO_NOTIFY",
             "BG_EV_DTVSV_SERVICE_INFO_NOTIFY", "BG_EV_DTVSV_BML_MAIL_REQ", "0x12345678"},
            set(events))
        self.assertEqual(("0 that the service caused", "0, of 1 sent"), events["0x12345678"])
        self.assertEqual([1] * 5, [rule["acted"] for rule in figures["rules"]])
        for event, expected, came in [("CA_INFO_NOTIFY", -1, 0), ("COMPONENT_INFO_NOTIFY", 3, 0),
                                      ("SERVICE_INFO_NOTIFY", 0, -1), ("BML_MAIL_REQ", 1, 0)]:
            caused, result = events["BG_EV_DTVSV_" + event]
            caused = int(caused.split()[0])
            received, *rest = result.replace(",", "").split()
            self.assertEqual(caused + expected + came, int(received), event)
            self.assertEqual([] if came == 0 else ["of", str(caused), "sent"], rest, event)

    def test_an_event_in_the_place_of_another(self):
        figures = self.evening({"records": [{"event": "CaInfoNotify", "nth": 1, "drop": True},
                                            {"event": "CaInfoNotify", "nth": 2, "copies": 1}]})
        (one,) = figures["differences"]
        caused = one["expected"].split()[0]
        self.assertEqual(f"{caused}, after 1 was dropped and 1 added", one["came"])

    def test_an_event_about_no_session(self):
        figures = self.evening({"records": [{"event": "GoodSensNotify", "nth": 1,
                                             "fields": {"handle": 515}}]})
        self.assertEqual([("Events", "", "about sessions [1, 2]", "about [515]")],
                         self.listed(figures))

    def test_a_reply_about_another_session_is_none(self):
        figures = self.evening({"records": [{"event": "ControlLNAReply",
                                             "fields": {"handle": 515}}]})
        self.assertEqual([("Signal", "ControlLNA", "BG_EV_DTVSV_CONTROL_LNA_REPLY", "none"),
                          ("Events", "", "about sessions [1, 2, 3]", "about [515]")],
                         self.listed(figures))

    def test_a_service_that_stops(self):
        began = time.monotonic()
        figures = self.evening({"stop": {"from": "ControlLNA", "send_result": -1}})
        self.assertLess(time.monotonic() - began, 30)
        self.assertEqual(("Signal", "ControlLNA", "that it is taken", "DTVSVLIB_RESULT_NG"),
                         self.listed(figures)[0])
        self.assertLess(len(figures["differences"]), 40)
        left = [one["part"] for one in figures["left_out"]]
        self.assertIn("Data broadcasting", left)
        self.assertIn("Two sessions at once", left)

    def test_a_service_that_never_begins(self):
        figures = self.evening({"stop": {"at_ms": 0}})
        self.assertEqual([("Switching on", "Create", "BG_EV_DTVSV_CREATE_REPLY", "none"),
                          ("Tuning", "Create", "BG_EV_DTVSV_CREATE_REPLY", "none")],
                         self.listed(figures)[:2])
        self.assertIn("Watching", [one["part"] for one in figures["left_out"]])

    def test_the_table_is_bounded(self):
        path = self.folder / "script.json"
        names = ["SetDisplayAll", "SetScreenDisplay", "SetCapDisplay", "SetBMLDisplay",
                 "ControlDisplayModeReq", "ControlScreenDisplay", "ControlDecodeScreen",
                 "ControlDecodeScreen_Sync", "ChangeAudioComponent", "ChangeSoundDualMono",
                 "SetSoundVideoDelay", "ControlDecodeAudio", "ControlDecodeAudio_Sync",
                 "ControlLNA", "SetTunerLog", "GetTunerLogStatus", "ChangeCapLang"]
        path.write_text(json.dumps({"version": 1, "commands": [
            {"command": name, "result": 77} for name in names]}))
        run = self.run_desk("evening", "--keep-going", "--quiet", "--script", path)
        self.assertEqual(1, run.returncode)
        self.assertIn("        expected result 0\n        came     result 77\n", run.stdout)
        shown, total = run.stdout.count("        came     "), len(names)
        self.assertGreaterEqual(shown, total)
        self.assertLessEqual(shown, 20)
        self.assertRegex(run.stdout, r"    and \d+ more, which --json shows\n")
        self.assertIn(f"\nrules that took effect  {total} of {total}:\n"
                      "    commands[0] SetDisplayAll: once\n", run.stdout)

    def test_live(self):
        figures = self.evening({"commands": [{"command": "SetCapDisplay", "result": 7}]},
                               "--live", "50")
        self.assertIn(("Planes", "SetCapDisplay", "result 0", "result 7"), self.listed(figures))


if __name__ == "__main__":
    unittest.main()
