"""A client of the language server, for tests."""
import json
import os
import pathlib
import re
import subprocess
import threading
import time


def matches(fragment, value):
    """True if the value has what the fragment says: members of objects, whole lists; ... is anything."""
    if fragment is ...:
        return True
    if callable(fragment):
        return fragment(value)
    if isinstance(fragment, dict):
        return isinstance(value, dict) and all(
            key in value and matches(part, value[key]) for key, part in fragment.items())
    if isinstance(fragment, list):
        return (isinstance(value, list) and len(fragment) == len(value)
                and all(map(matches, fragment, value)))
    return fragment == value and isinstance(value, type(fragment))


def place(line, character):
    return {"line": line, "character": character}


def span(line, begin, end, last=None):
    return {"start": place(line, begin), "end": place(line if last is None else last, end)}


def edited(text, edits, encoding):
    """The text with edits that must not overlap, as a client applies them."""
    size, codec = (2, "utf-16-le") if encoding == "utf-16" else (1, encoding)
    lines = [line.encode(codec) for line in re.split(r"(?<=\n)|(?<=\r)(?!\n)", text)]
    starts = [0]
    for line in lines:
        starts.append(starts[-1] + len(line))
    whole, result, at = b"".join(lines), b"", 0
    for edit in edits:
        begin, end = (starts[edit["range"][side]["line"]] + edit["range"][side]["character"] * size
                      for side in ("start", "end"))
        assert at <= begin <= end, edits
        result += whole[at:begin] + edit["newText"].encode(codec)
        at = end
    return (result + whole[at:]).decode(codec)


# Of a client that takes all there is, but for encodings and ranges of completions.
EVERYTHING = {"textDocument": {
    "completion": {"completionItem": {"snippetSupport": True, "documentationFormat": ["markdown"]}},
    "documentSymbol": {"hierarchicalDocumentSymbolSupport": True},
    "hover": {"contentFormat": ["plaintext", "markdown"]},
    "publishDiagnostics": {"relatedInformation": True, "codeDescriptionSupport": True,
                           "tagSupport": {"valueSet": [1]}},
    "rename": {"prepareSupport": True},
    "signatureHelp": {"signatureInformation": {"parameterInformation": {"labelOffsetSupport": True}}}}}


class Client:
    """Each wait takes the messages in their order; notifications that nobody waits for are dropped."""

    def __init__(self, velc, encodings=(), initialize=True, patience=60, capabilities=None, folders=None):
        self.process = subprocess.Popen([velc, "lsp", "--stdio"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        # One that hangs ends, and with it each wait.
        self.limit = threading.Timer(patience, self.process.kill)
        self.limit.daemon = True
        self.limit.start()
        self.ids = 0
        self.notes = []  # messages that came while another was waited for
        self.versions = {}
        if initialize:
            capabilities = {"general": {"positionEncodings": list(encodings)},
                            **(EVERYTHING if capabilities is None else capabilities)}
            self.server = self.request("initialize", {
                "processId": None, "rootUri": None, "capabilities": capabilities, "workspaceFolders":
                folders and [self.folder(folder) for folder in folders]})["result"]
            self.notify("initialized", {})

    def raw(self, content, header=None):
        content = content if isinstance(content, bytes) else content.encode()
        header = header or f"Content-Length: {len(content)}\r\n\r\n"
        self.process.stdin.write(header.encode() + content)
        self.process.stdin.flush()

    def send(self, message):
        self.raw(json.dumps({"jsonrpc": "2.0", **message}, ensure_ascii=False))

    def notify(self, method, params):
        self.send({"method": method, "params": params})

    def start(self, method, params=None):
        self.ids += 1
        self.send({"id": self.ids, "method": method, "params": params})
        return self.ids

    def request(self, method, params=None):
        number = self.start(method, params)
        return self.wait(lambda message: message.get("id") == number and "method" not in message)

    def read(self):
        length = None
        while (line := self.process.stdout.readline().strip()):
            name, _, value = line.partition(b":")
            if name.lower() == b"content-length":
                length = int(value)
        if length is None:
            raise EOFError("the server has ended")
        return json.loads(self.process.stdout.read(length))

    def wait(self, wanted):
        for index, message in enumerate(self.notes):
            if wanted(message):
                del self.notes[index]
                return message
        while not wanted(message := self.read()):
            self.notes.append(message)
        return message

    def diagnostics(self, path, version=...):
        uri = path if ":" in str(path) else pathlib.Path(path).as_uri()
        fragment = {"method": "textDocument/publishDiagnostics",
                    "params": {"uri": uri, "version": version} if version is not ... else {"uri": uri}}
        return self.wait(lambda message: matches(fragment, message))["params"]["diagnostics"]

    def document(self, path):
        return {"textDocument": {"uri": path if ":" in str(path) else pathlib.Path(path).as_uri()}}

    @staticmethod
    def folder(path):
        return {"uri": pathlib.Path(path).as_uri(), "name": pathlib.Path(path).name}

    def open(self, path, text=None):
        self.versions[path] = 1
        document = self.document(path)
        document["textDocument"].update(languageId="st", version=1, text=(
            pathlib.Path(path).read_bytes().decode() if text is None else text))
        self.notify("textDocument/didOpen", document)

    def change(self, path, *changes):
        """Each change is a new text, or a pair of a range and a text. Returns the version."""
        self.versions[path] += 1
        document = self.document(path)
        document["textDocument"]["version"] = self.versions[path]
        document["contentChanges"] = [
            {"text": change} if isinstance(change, str) else {"range": change[0], "text": change[1]}
            for change in changes]
        self.notify("textDocument/didChange", document)
        return self.versions[path]

    def close(self, path):
        self.notify("textDocument/didClose", self.document(path))

    def end(self):
        """Ends in order and returns the exit code."""
        self.request("shutdown")
        self.notify("exit", None)
        return self.process.wait(timeout=60)

    def kill(self):
        self.limit.cancel()
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()

    def memory(self):
        """Resident, in KiB."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0])


def seconds(work):
    begin = time.monotonic()
    work()
    return time.monotonic() - begin


def temporary_project(folder, files):
    for name, text in files.items():
        path = pathlib.Path(folder) / name
        os.makedirs(path.parent, exist_ok=True)
        path.write_bytes(text.encode())
    return pathlib.Path(folder)
