"""What a service layer does on a day, as steps for field.Session. Everything here is answered, and
nothing is refused: what goes wrong is added by the situations."""
import json

VIDEO = {"surface_handle": "new", "surface_width": 320, "surface_height": 180,
         "screen_rotate": "ROTATE_0", "screen_mode": "NORMAL"}
LAYOUT = {"font_size": 16, "characters_num": 20, "lines_num": 3, "separator_size": 2, "position_x": 0,
          "position_y": 0, "background_color": "BLACK", "background_alpha": "ON"}
CAPTIONS = {"surface_handle": "new", "surface_width": 320, "surface_height": 60,
            "screen_rotate": "ROTATE_0", "cap_info": LAYOUT}
DATA = {"surface_handle": "new", "surface_width": 320, "surface_height": 240, "screen_rotate": "ROTATE_0"}
COMPONENTS = {"cap_lang": "LANGUAGE_1", "dualmono": "MAIN", "audio_component": "FIRST",
              "cap_start_type": "OFF", "bml_start_type": "OFF", "video_drawing_info": VIDEO,
              "cap_drawing_info": CAPTIONS, "bml_drawing_info": DATA}
STATIONS = [14, 16, 24, 28, 32]
ON, OFF = 1, 0


def broadcast(channel, service=0):
    return {"physical_channel": channel, "service_no": service}


def text(value):
    """A value as a step has it."""
    return json.dumps(value, separators=(",", ":")) if isinstance(value, (dict, list, type(None))) \
        else str(value)


class Day:
    """Steps, in order. `random` chooses what differs from day to day."""

    def __init__(self, random, load=True, session=1):
        self.random = random
        self.session = session
        self.steps = []
        if load:
            self.step("load")
            self.wait(random.randrange(300, 2000))

    def step(self, line):
        self.steps.append(line)
        return self

    def wait(self, milliseconds):
        return self.step(f"wait {milliseconds}")

    def think(self):
        """A person looks at what has come."""
        return self.wait(self.random.randrange(400, 3000))

    def call(self, native, *arguments, session=None):
        """Calls a native of the session."""
        values = [self.session if session is None else session, *arguments]
        self.step(f"{native} {'|'.join(text(value) for value in values)}")
        return self.think()

    def create(self):
        self.step("Create 0|100")
        return self.think()

    def planes(self):
        self.call("SetFirstComponent", COMPONENTS)
        if self.random.random() < 0.5:
            self.call("SetDisplayAll", VIDEO, CAPTIONS, DATA)
        return self

    def open(self):
        return self.create().planes()

    def scan(self):
        """A scan that is cancelled."""
        self.call("StartScan")
        return self.call("CancelScan")

    def select(self, channel=None):
        self.call("SelectChannel", broadcast(channel or self.random.choice(STATIONS)))
        return self.wait(1500)

    def sound(self):
        self.call("ControlDecodeAudio", OFF)
        self.call("ControlDecodeAudio", ON)
        if self.random.random() < 0.5:
            self.call("ControlDecodeAudio_Sync", OFF)
            self.call("ControlDecodeAudio_Sync", ON)
        return self.call("SetSoundVideoDelay", self.random.randrange(0, 90), 40)

    def picture(self):
        self.call("ControlDisplayModeReq", self.random.randrange(0, 3), 0)
        self.call("ControlScreenDisplay", ON)
        self.call("ControlDecodeScreen", OFF)
        return self.call("ControlDecodeScreen_Sync", ON)

    def signal(self):
        self.call("ControlLNA", 16)
        self.call("SetTunerLog", 1)
        self.call("GetTunerLogStatus")
        return self.call("SetTunerLog", 2)

    def captions(self):
        self.call("ControlCap", 1, 1, CAPTIONS)
        self.call("ChangeCapLang", 1)
        return self.call("ControlCap", 0, 1, CAPTIONS)

    def record(self):
        self.call("StartRec", 0)
        self.wait(self.random.randrange(2000, 6000))
        return self.call("TerminateRec", {"save_data": "ON", "title_size": 0, "title_name": "Jornal"})

    def watch(self, parts=2):
        """Some of what is done while something is received."""
        for part in self.random.sample(["sound", "picture", "signal", "captions", "record"], parts):
            getattr(self, part)()
        return self

    def stop(self):
        return self.call(self.random.choice(["TerminateBroadcastReceiving",
                                             "TerminateBroadcastReceiving_Sync"]))

    def release(self):
        return self.call(self.random.choice(["Release", "Release_Sync"]))

    def close(self):
        return self.stop().release()
