#!/usr/bin/env python3
"""What `--redact` shows of a log: what went wrong, and nothing of what was said.

usage: redacted_test.py BUILD
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

EXPLAIN = pathlib.Path(sys.argv[1]).resolve() / "bin/dtv-explain"
SECRETS = ["090-1234-5678", "Sato", "0120-44"]
LOG = """\
11-21 22:13:37.123  3109  3110 W Dtv_jni : ,TENRIK,desk    ,FUNCSTART,JNI_OnLoad(),  66,
11-21 22:13:37.123  3109  3110 W Dtv_jni : ,TENRIK,desk    ,FUNCEND  ,JNI_OnLoad(),  66,
11-21 22:13:37.200  3109  3111 W JNIDtvSvLibListener: ,TENRIK,DtvEvent-1,FUNCSTART,recvEventFromServer(),  39,\
pid = 3109, threadid = a1, event_id = 10000049, recv_size = 102
11-21 22:13:37.200  3109  3111 W JNIDtvSvLibListener: ,TENRIK,DtvEvent-1,FUNCSTART,DoListenerEvent(),  59,
11-21 22:13:37.200  3109  3111 W JNIDtvSvLibListener: ,TENRIK,DtvEvent-1,FUNCSTART,dtvsv_msgid_lib_bml_call_req(), 211,
11-21 22:13:37.200  3109  3111 W JNIDtvSvLibListener: ,TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_bml_call_req(), 215,\
CALL_REQ : phone_number = |0120-44|
11-21 22:13:38.123  3109  3111 W System.err: java.lang.IllegalStateException: call of 090-1234-5678 by Sato
11-21 22:13:38.123  3109  3111 W System.err: \tat tenrik.service.dtvserver.BGCallBack.onEvDtvsvBmlCallReq(BGCallBack.java:12)
"""


def explain(*arguments):
    with tempfile.TemporaryDirectory() as folder:
        log = pathlib.Path(folder) / "log"
        log.write_text(LOG, encoding="utf-8")
        run = subprocess.run([EXPLAIN, *arguments, log], capture_output=True, text=True, timeout=60, check=False)
    return run.stdout


class Redacted(unittest.TestCase):
    def test_the_secrets_would_be_shown(self):
        shown = explain() + explain("--around", "6")
        self.assertEqual([], [secret for secret in SECRETS if secret not in shown])

    def test_no_secret_is_shown(self):
        for arguments in [(), ("--json",), ("--around", "6"), ("--around", "7")]:
            shown = explain("--redact", *arguments)
            self.assertEqual([], [secret for secret in SECRETS if secret in shown])

    def test_the_same_is_found(self):
        found = [[(finding["rule"], finding["subject"], finding["lines"]) for finding in
                  json.loads(explain(*arguments, "--json"))["findings"]] for arguments in [(), ("--redact",)]]
        self.assertEqual([("callback-threw", "BmlCallReq", [8])], found[0])
        self.assertEqual(found[0], found[1])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
