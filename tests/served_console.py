"""The web console of the released host, as those meet it who speak HTTP."""

import contextlib
import http.client
import json
import pathlib
import re
import subprocess
import urllib.parse
from dataclasses import dataclass

from windows_programs import HOST, MODULE, TIME_LIMIT, WINE, windows_path


@dataclass
class Console:
    """A console that runs, and the folder whose instances it shows."""
    address: str
    folder: pathlib.Path
    process: subprocess.Popen

    @property
    def authority(self) -> str:
        return urllib.parse.urlsplit(self.address).netloc

    def url(self, path: str) -> str:
        return urllib.parse.urljoin(self.address, path)

    def request(self, method: str, path: str, body: str | None = None, **fields: str):
        """Status, fields and body of the answer. Fields are those of the request, with _ for -."""
        connection = http.client.HTTPConnection(self.authority, timeout=TIME_LIMIT)
        try:
            connection.request(method, path, body, {name.replace("_", "-"): text for name, text in fields.items()})
            answer = connection.getresponse()
            return answer.status, dict(answer.getheaders()), answer.read().decode()
        finally:
            connection.close()

    def token(self) -> str:
        _, _, page = self.request("GET", "/add/Sound/form")
        return re.search(r'name="token" value="(\w+)"', page)[1]

    def post(self, path: str, **values: str):
        """As a form of the console's would."""
        form = urllib.parse.urlencode({"token": self.token(), **values})
        return self.request("POST", path, form, Origin=self.address.rstrip("/"),
                            Content_Type="application/x-www-form-urlencoded")


@contextlib.contextmanager
def running_console(folder, environment, *options: str, shown_as: str = ""):
    """Of the folder, which Windows may know by a name that is to be seen."""
    process = subprocess.Popen(
        [WINE, HOST, "serve", shown_as or windows_path(folder), "--port", "0", "--module", windows_path(MODULE), "--json",
         *options],
        env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
    try:
        yield Console(json.loads(process.stdout.readline())["address"], folder, process)
    finally:
        process.kill()
        process.wait()
