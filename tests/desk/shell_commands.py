"""Tests of the remote control's commands, family by family."""

from shell_driver import Terminal


class Commands(Terminal):
    """The commands for a receiver."""

    def test_two_sessions_receive_different_stations(self):
        self.start()
        self.do("create", "< session 1")
        self.do("scan", "< 35 stations found", "32  Rede Brasil")
        self.do("create", "< session 2")
        self.do("select 14", "< receiving 14  RBI TV, service 0")
        self.do("session 1")
        self.do("select 32", "< receiving 32  Rede Brasil, service 0")
        self.do("sessions", "* 1  receives 32  Rede Brasil", "2  receives 14  RBI TV")
        self.enter("release", "< released", "desk 2> ")
        self.leave()

    def test_a_station_is_found_and_received(self):
        self.start()
        self.do("select 32", '! no session is open; "create" opens one')
        self.do("channels", "no station is known")
        self.do("create 50", "< session 1")
        self.do("scan", "< 35 stations found", "14  RBI TV", "32  Rede Brasil")
        self.do("channels", "14  RBI TV", "32  Rede Brasil")
        self.do("epg", "! nothing was received yet")
        self.do("select 32", "< receiving 32  Rede Brasil, service 0")
        self.do("epg", "32  Rede Brasil", "now   19:00   0 h 30 min  Jornal da noite",
                "next  19:30   2 h 15 min  Futebol ao vivo")
        self.do("search down", "< receiving 31  Ideal TV")
        self.do("select 37", "! the service answered with result 5, no such thing")
        self.do("select 63", "! the bridge refused it: PARAM_NG, an argument is not allowed")
        self.do("stop", "< stopped")
        self.do("stop", "! the service answered with result 1, not now")
        self.do("select --start 14", "< receiving 14  RBI TV, service 0")
        self.do("stop --sync", "< stopped")
        self.do("scan --no-wait", "< sent")
        self.do("wait 0.1")
        self.do("scan --cancel", "< cancelled")
        self.do("scan --cancel --sync", "! the service answered with result 1, not now")
        self.do("release --sync", "< released")
        self.leave()

    def test_captions_sound_and_planes(self):
        self.start()
        self.do("create 40", "< session 1")
        self.do("captions on", "! the service answered with result 1, not now")
        self.do("display first --captions", "< set")
        self.do("select 32", "< receiving")
        self.expect("* [1] captions  on")
        self.do("captions suspend --sync", "< suspended")
        self.do("captions resume", "< resumed")
        self.do("captions language language_2", "< changed")
        self.do("captions language 9", "! captions language: ", "9 is none of LANGUAGE_1 (0)")
        self.do("captions off", "< off")
        self.do("display place", "< placed")
        self.do("display place data", "< placed")
        self.do("display mode wide 1", "< changed")
        self.do("display show", "< shown")
        self.do("display hide", "< hidden")
        self.do("display release captions", "< released")
        self.do("decode picture off", "< not decoding")
        self.do("decode picture on --sync", "< decoding")
        self.do("decode sound off --sync", "< not decoding")
        self.do("sound component 1", "< switched")
        self.do("sound dual sub", "< switched")
        self.do("sound delay 40 40", "< delayed")
        self.do("sound delay 41 40", "! the bridge refused it: PARAM_NG")
        self.do("signal lna 16", "< set")
        self.do("signal log on", "< logged")
        self.do("signal log status", "< logged")
        self.do("signal log off", "< not logged")
        self.do("signal log status", "< not logged")
        self.leave()

    def test_requests_of_a_document_are_answered(self):
        self.start()
        self.do("create", "< session 1")
        self.do("select 32", "< receiving")
        self.do("requests", "there is no request")
        self.do_all("data on", "< on",
                    "? [1] asks for permission: PERMISSION_REQ[permit_type=1, task_id=101]")
        self.do("requests", "[1] permission: PERMISSION_REQ[permit_type=1, task_id=101]")
        self.do("answer mail", "! there is no such request")
        self.do_all("answer permission", "< permission answered", "? [1] asks for auth: ")
        self.do_all("answer --refuse", "< auth refused", "? [1] asks for write_nvram: ")
        self.do_all("answer auto on", *("< " + kind + " answered" for kind in (
            "write_nvram", "read_nvram", "start_fep", "mail", "phonebook", "call", "schedule",
            "browser", "save_picture", "start_tvlink", "enrol_tvlink")))
        self.do("answer auto off")
        self.do("requests", "there is no request")
        self.do("data key blue", "< sent")
        self.do("data key BLUE release", "< sent")
        self.do("data suspend --sync", "< suspended")
        self.do("data resume", "< resumed")
        self.do("data restart", "< restarted")
        self.do("data off", "< off")
        self.do("data link http://example.com/receitas", "< shown")
        self.do("data unlink --sync", "< left")
        self.do("data unlink", "! the service answered with result 1, not now")
        self.leave()

    def test_a_recording_is_made_and_played(self):
        self.start()
        self.do("create", "< session 1")
        self.do("record start", "! the service answered with result 1, not now")
        self.do("select 32", "< receiving")
        self.do("record start card", "< recording")
        self.do("record discard --sync", "< discarded")
        self.do("record start", "< recording")
        self.do("stop", "! the service answered with result 1, not now")
        # Long enough to be still under way at any speed below.
        self.do("wait 3")
        self.do('record stop "Programa  #1"', "< kept", "< programme 1")
        self.do("recordings", "1  internal  Programa  #1")
        self.do("stop", "< stopped")
        self.do("play 2", "! the service answered with result 5, no such thing")
        self.do("play 1 --paused", "< paused")
        self.do("slide", "< moved")
        self.do("move --back", "< moved")
        self.do("resume", "< playing")
        self.do("speed 3", "! the bridge refused it: PARAM_NG")
        self.do("speed x", "! x is no speed")
        self.do("speed 20/10 --back", "< speed 20/10")
        self.do("pause", "< paused")
        self.enter("resume")
        self.expect("< playing")
        self.prompt()
        self.do_all("skip 10", "< skipped", "* [1] playback has reached the end")
        self.do("end", "< ended")
        self.do("end --sync", "! the service answered with result 1, not now")
        self.leave()

    def test_natives_are_called_with_any_arguments(self):
        self.start()
        self.do("send --list", "Create(int start_type, int max_delay_time)",
                "SelectChannel(int handle, BROADCAST_INFO broadcast_info)",
                "TerminateRec_Sync(int handle, TERMINATE_REC_REQ terminate_rec)")
        self.do("send Release .", '! handle: there is no current session for "."')
        self.do_all("send DtvSvLib_Create 0x0 100", "Create returned DTVSVLIB_RESULT_OK",
                    "* [1] CREATE_REPLY[result=0]")
        self.do('send SelectChannel . {"physical_channel": 63}',
                "SelectChannel returned DTVSVLIB_RESULT_PARAM_NG")
        self.do("send SelectChannel . null", "SelectChannel returned DTVSVLIB_RESULT_PARAM_NG")
        self.do('send SelectChannel 1 {"channel": 32}', "! broadcast_info: no component channel in",
                '{"physical_channel": 0,')
        self.do('send SelectChannel . {"physical_channel": 32.5}', "32.5 is no int")
        self.do("send SelectChannel .", "! 1 argument given, of 2: SelectChannel(int handle,")
        self.do("send SelectChannels .", "! SelectChannels: no such native")
        self.do('send SelectChannel . {"physical_channel": 32', "! the line lacks a closing")
        self.do("send Create 99999999999 0", "! start_type: 99999999999 is no int")
        self.do("send Create 0 1000", "Create returned DTVSVLIB_RESULT_PARAM_NG")
        self.do("send ControlDecodeScreen_Sync . 2",
                "ControlDecodeScreen_Sync returned DTVSVLIB_RESULT_PARAM_NG")
        self.do('send ControlBML . CONTROL_TYPE.ON {"surface_handle": "new", "screen_rotate":'
                ' "ROTATE_90"}', "ControlBML returned DTVSVLIB_RESULT_OK")
        self.do('send ControlBML . 1 {"surface_handle": 1, "screen_rotate": 0}',
                'surface_handle: no surface that "new" made is at 1')
        self.do('send ControlBML . 1 {"surface_handle": "new", "screen_rotate": 4}',
                "screen_rotate: 4 is none of", "ROTATE_0 (0)")
        self.do("send ControlBML . CONTROL_TYPE.MAYBE null", "MAYBE is none of OFF (0)")
        self.do('send BMLReadNvramReply . {"bml_end_type": "OK", "ts_name": "x", "nvram_data":'
                ' [1, 256]}', "nvram_data: 256 is no byte")
        self.do('send BMLReadNvramReply . {"bml_end_type": 0, "ts_name": "x", "nvram_data":'
                ' "0g"}', "neither a list of bytes")
        # Good arguments, but no request is open.
        self.do('send BMLReadNvramReply . {"bml_end_type": 0, "ts_name": "x", "nvram_data":'
                ' "01ff"}', "BMLReadNvramReply returned DTVSVLIB_RESULT_NG")
        self.do("send Release_Sync .", "Release_Sync returned", "return_value=0")
        self.do("sessions", "no session is open")
        self.leave()

    def test_the_trace_is_shown_while_it_is_on(self):
        self.start()
        self.do("create", "< session 1")
        self.do("trace on")
        self.enter("signal lna 16")
        self.expect("FUNCSTART,dtvSvLibControlLNA()")
        self.expect("FUNCEND  ,dtvSvLibControlLNA()")
        # The last call of the event's path to Java.
        self.expect("CallMethod, CallStaticMethod")
        self.do("trace off")
        self.do("signal lna 17", "< set")
        self.do("trace dtvSvLibSetTunerLog")
        self.enter("signal log on")
        self.expect("FUNCSTART,dtvSvLibSetTunerLog()")
        self.expect("FUNCEND  ,dtvSvLibSetTunerLog()")
        self.do("trace off")
        self.leave()
        printed = self.printed()
        self.assertEqual(printed.count("FUNCSTART,dtvSvLibControlLNA()"), 1)
        self.assertIn("recvEventFromServer", printed)
        filtered = printed.partition("trace dtvSvLibSetTunerLog")[2]
        self.assertNotIn("recvEventFromServer", filtered)
        with open(self.trace, encoding="utf-8") as file:
            self.assertEqual(file.read().count("FUNCSTART,dtvSvLibControlLNA()"), 2)
