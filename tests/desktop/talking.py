#!/usr/bin/python3
"""A first hour with the program: register, sign in, ask, stop, ask again, pin, rename, synchronise,
come back another time, sign out."""

import html.parser
import json
import pathlib
import signal
import sys
import time
import urllib.parse
import urllib.request

from desktop import Desktop, press_keys, type_text, wait_for
from screenreader import ScreenReader, text_of

PROGRAM, SERVICE = sys.argv[1:]
HANDLE, PASSWORD = "Ada Byron", "a long engine 1843"
QUESTION, NEXT_QUESTION = "Why do dams fail?", "What was known before?"
NAME = "Dams and what was known"
WORDS = json.loads((pathlib.Path(__file__).parents[2] / "resources/Localized/en.json").read_text())
ARRIVED = WORDS["answerArrived"]


class Form(html.parser.HTMLParser):
    """The form of a web page: where it goes, and the fields that are hidden in it."""

    def __init__(self, page):
        super().__init__()
        self.action, self.fields = None, {}
        self.feed(page)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == "form":
            self.action = attributes["action"]
        elif tag == "input" and attributes.get("type") == "hidden":
            self.fields[attributes["name"]] = attributes["value"]


def send(address, body, **headers):
    request = urllib.request.Request(address, body, {name.replace("_", "-"): value for name, value in headers.items()})
    with urllib.request.urlopen(request, timeout=60) as reply:
        return reply.read().decode()


def register(address):
    """As a browser does on the page at the address."""
    form = Form(send(address, None))
    fields = form.fields | {"handle": HANDLE, "password": PASSWORD, "repeat": PASSWORD}
    page = urllib.parse.urlsplit(address)
    send(urllib.parse.urljoin(address, form.action), urllib.parse.urlencode(fields).encode(),
         Origin=f"{page.scheme}://{page.netloc}", Referer=address)


class Account:
    """The user's account, as another device of his would see it."""

    def __init__(self, address):
        self.address = address
        self.token = self._post("account/login", {"handle": HANDLE, "password": PASSWORD})["token"]

    def _post(self, path, value, **headers):
        body = json.dumps(value).encode()
        return json.loads(send(f"{self.address}/v1/{path}", body, Content_Type="application/json", **headers))

    def conversations(self):
        library = self._post("library", {"changes": []}, Authorization="Bearer " + self.token)
        return [record["conversation"] for record in library["records"] if "conversation" in record]


class Walk:
    def __init__(self, desktop):
        self.desktop = desktop
        self.reader = ScreenReader()
        self.service, self.address = desktop.start_service(SERVICE)
        desktop.use_service(self.address)

    def start_program(self):
        self.program = self.reader.process = self.desktop.start(PROGRAM)
        self.desktop.wait_for_window(self.program)
        self.reader.find("Connected")

    def quit_program(self):
        press_keys("ctrl+q")
        code = self.program.wait(60)
        assert code == 0, f"The program ends with {code}:\n{self.desktop.log(PROGRAM)}"

    def write(self, question):
        self.reader.go_to(None)
        type_text(question)

    def texts(self):
        """The messages on the screen."""
        return [text for place in self.reader.places() if (text := text_of(place))]

    def register_and_sign_in(self):
        self.reader.press("Account")
        self.reader.press("Create an account on the web")
        register(wait_for(lambda: self.desktop.opened.exists() and self.desktop.opened.read_text().strip(),
                          "No page is opened."))
        self.reader.go_to("Name")
        type_text(HANDLE)
        press_keys("Tab")
        self.reader.wait_until_at(None, "password text")
        type_text(PASSWORD)
        assert not any(PASSWORD in text for text in [self.reader.everything(), *self.texts()])
        press_keys("Return")
        self.reader.find(HANDLE)

    def ask_and_stop(self):
        self.reader.press("Ask")
        self.write(QUESTION)
        told = list(self.reader.announced())
        # From here on the service moves in small steps, so that the answer cannot be over before it is
        # stopped, nor the program lose its patience with it.
        self.service.send_signal(signal.SIGSTOP)
        press_keys("ctrl+Return")
        while len(self.texts()) < 2:
            self.service.send_signal(signal.SIGCONT)
            time.sleep(0.02)
            self.service.send_signal(signal.SIGSTOP)
        self.reader.press("Stop")
        self.reader.wait_until_gone("Stop")
        self.service.send_signal(signal.SIGCONT)
        assert self.reader.announced() == told, "Nobody needs to be told of what he has done himself."

    def ask_again(self):
        self.write(NEXT_QUESTION)
        press_keys("ctrl+Return")
        wait_for(lambda: ARRIVED in self.reader.announced(), "No answer is announced.")
        self.answer = self.texts()[-1]

    def pin(self):
        self.reader.press("Save conversation to wall")
        self.reader.find("The conversation is on your wall.", "alert")
        assert self.reader.announced().count(ARRIVED) == 1
        press_keys("Return")
        self.reader.find("Wall, 1")

    def rename(self):
        self.reader.press("Conversations")
        self.reader.press(WORDS["actions"])
        self.reader.press("Rename", "menu item")
        self.reader.wait_until_at("Rename")
        type_text(NAME)
        press_keys("Return")
        self.reader.find(NAME)

    def synchronise(self):
        account = Account(self.address)
        kept = lambda: [talk for talk in account.conversations() if talk["title"] == NAME]
        talk, = wait_for(kept, "The service does not get the new name.")
        assert talk["wallID"] and [message["content"] for message in talk["messages"]][0] == QUESTION

    def come_back(self):
        self.quit_program()
        self.start_program()
        self.reader.press("Conversations")
        self.reader.press(NAME)
        wait_for(lambda: self.answer in self.texts(), "The conversation is not what it was.")

    def sign_out(self):
        self.reader.press("Account")
        self.reader.tab_to("Sign out")
        press_keys("Return")
        self.reader.find("Name", "text")
        self.reader.press("Conversations")
        self.reader.find("No conversations here")


with Desktop() as desktop:
    walk = Walk(desktop)
    walk.start_program()
    for step in (walk.register_and_sign_in, walk.ask_and_stop, walk.ask_again, walk.pin, walk.rename,
                 walk.synchronise, walk.come_back, walk.sign_out, walk.quit_program):
        step()
