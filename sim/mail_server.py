"""A real mail server, Postfix, on port 25 of a loopback address, with a configuration, a queue and
mailboxes of its own in one folder. Nothing of the machine's own configuration is read or changed.

usage: mail_server.py ADDRESS MAILBOX

Delivers to one mailbox, prints "listening", and then each message that arrives as a mail reader shows it.
Ends when its standard input does.

Port 25 needs privileges, and Postfix is started by root: for other users both go by sudo.
"""

import contextlib
import email
import email.policy
import os
import pathlib
import pwd
import select
import socket
import stat
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent


def postfix_root() -> str:
    """Under which Postfix is: the machine's root folder, written as nothing, or the folder that tools/setup
    has put it into where another mail server is the machine's."""
    cache = subprocess.run(["sh", "-c", '. tools/lib/cache.sh; printf %s "$cache"'], cwd=ROOT,
                           capture_output=True, text=True, check=True).stdout
    own = pathlib.Path(cache) / "postfix"
    return str(own) if own.exists() else ""


POSTFIX = postfix_root()
POSTFIX_LIBRARIES = f"{POSTFIX}/usr/lib/postfix"
# To whom its files belong. Only where it is the machine's does it have users of its own.
MAIL_OWNER, SETGID_GROUP = ("daemon", "mail") if POSTFIX else ("postfix", "postdrop")
PRIVILEGED = [] if os.geteuid() == 0 else ["sudo", "-n"]

# Seconds within which a server starts or ends, or a message arrives: far more than it takes.
TIME_LIMIT = 60


def answers(address: str) -> bool:
    try:
        with socket.create_connection((address, 25), 1) as connection:
            connection.settimeout(TIME_LIMIT)
            return connection.recv(4).startswith(b"220")
    except OSError:
        return False


def wait_until(condition, what: str) -> None:
    deadline = time.monotonic() + TIME_LIMIT
    while not condition():
        assert time.monotonic() < deadline, f"{what} does not come about"
        time.sleep(0.02)


@contextlib.contextmanager
def running(command: list[str], address: str, **options):
    """A server that greets on port 25 of the address."""
    server = subprocess.Popen(
        [*PRIVILEGED, "env", f"LD_LIBRARY_PATH={POSTFIX_LIBRARIES}", *command],
        stdin=subprocess.DEVNULL, **options)
    try:
        wait_until(lambda: server.poll() is not None or answers(address), "a greeting")
        assert server.poll() is None, f"{command[0]} ended with {server.returncode}"
        yield server
    finally:
        server.terminate()
        server.wait(TIME_LIMIT)


class MailServer:
    """Postfix, and the mailboxes of its domain."""

    DOMAIN = "example.org"

    def __init__(self, folder: pathlib.Path, address: str, mailboxes: list[str]):
        self.address = address
        self._folder = folder
        self._mailboxes = mailboxes

    @contextlib.contextmanager
    def running(self):
        self._make_folders()
        self._configure()
        program = [f"{POSTFIX_LIBRARIES}/sbin/master", "-c", str(self._folder / "etc"), "-d"]
        with running(program, self.address):
            yield self

    def mail_in(self, mailbox: str) -> list[bytes]:
        """The messages of a mailbox, oldest first."""
        folder = self._folder / "mailboxes" / mailbox / "new"
        return [self._read(folder / name) for name in self._list(folder)]

    def wait_for_mail(self, mailbox: str, count: int) -> list[bytes]:
        """The same once there are so many."""
        wait_until(lambda: len(self.mail_in(mailbox)) >= count, f"mail for {mailbox}")
        return self.mail_in(mailbox)

    @staticmethod
    def _list(folder: pathlib.Path) -> list[str]:
        # By the time of the files, since names of the same second do not tell.
        return subprocess.run([*PRIVILEGED, "ls", "-tr", folder], capture_output=True,
                              text=True).stdout.split()

    @staticmethod
    def _read(file: pathlib.Path) -> bytes:
        return subprocess.run([*PRIVILEGED, "cat", file], capture_output=True, check=True).stdout

    def _make_folders(self):
        queue = [f"queue/{name}" for name in (
            "active", "bounce", "corrupt", "defer", "deferred", "flush", "hold", "incoming",
            "private", "saved", "trace")]
        for name, owner in [("etc", None), ("queue", None), ("queue/pid", None),
                            ("queue/maildrop", f"{MAIL_OWNER}:{SETGID_GROUP}"),
                            ("queue/public", f"{MAIL_OWNER}:{SETGID_GROUP}"), ("data", MAIL_OWNER),
                            ("mailboxes", "nobody"), *((name, MAIL_OWNER) for name in queue)]:
            (self._folder / name).mkdir()
            if owner:
                subprocess.run([*PRIVILEGED, "chown", owner, self._folder / name], check=True)

    def _configure(self):
        nobody = pwd.getpwnam("nobody")
        settings = {
            "compatibility_level": "3.6",
            "queue_directory": self._folder / "queue",
            "data_directory": self._folder / "data",
            "command_directory": f"{POSTFIX}/usr/sbin",
            "daemon_directory": f"{POSTFIX_LIBRARIES}/sbin",
            "shlib_directory": POSTFIX_LIBRARIES,
            "meta_directory": f"{POSTFIX}/etc/postfix",
            "import_environment":
                "MAIL_CONFIG MAIL_DEBUG MAIL_LOGTAG TZ LANG=C POSTLOG_SERVICE POSTLOG_HOSTNAME "
                "LD_LIBRARY_PATH",
            "mail_owner": MAIL_OWNER,
            "setgid_group": SETGID_GROUP,
            "maillog_file": self._folder / "log",
            "maillog_file_prefixes": self._folder,
            "myhostname": f"relay.{self.DOMAIN}",
            # What it takes for its own address. The one that it listens at is said in master.cf.
            "inet_interfaces": "127.0.0.1",
            "inet_protocols": "ipv4",
            "mydestination": "",
            "local_recipient_maps": "",
            "alias_maps": "",
            "mynetworks": "127.0.0.0/8",
            "virtual_mailbox_domains": self.DOMAIN,
            "virtual_mailbox_base": self._folder / "mailboxes",
            "virtual_mailbox_maps": f"texthash:{self._folder}/etc/mailboxes",
            "virtual_uid_maps": f"static:{nobody.pw_uid}",
            "virtual_gid_maps": f"static:{nobody.pw_gid}",
        }
        services = [
            f"{self.address}:25 inet n - n - - smtpd",
            "pickup unix n - n 60 1 pickup",
            "cleanup unix n - n - 0 cleanup",
            "qmgr unix n - n 300 1 qmgr",
            "rewrite unix - - n - - trivial-rewrite",
            *(f"{name} unix - - n - 0 bounce" for name in ("bounce", "defer", "trace")),
            *(f"{name} unix - - n - - error" for name in ("error", "retry")),
            "virtual unix - n n - - virtual",
            "proxymap unix - - n - - proxymap",
            "anvil unix - - n - 1 anvil",
            "postlog unix-dgram n - n - 1 postlogd",
        ]
        folder = self._folder / "etc"
        (folder / "main.cf").write_text(
            "".join(f"{name} = {value}\n" for name, value in settings.items()))
        (folder / "master.cf").write_text("".join(f"{service}\n" for service in services))
        (folder / "mailboxes").write_text(
            "".join(f"{name}@{self.DOMAIN} {name}/\n" for name in self._mailboxes))


def public_folder() -> pathlib.Path:
    """For temporary files that others get at too: the one that is set may be its user's alone."""
    choices = [pathlib.Path(name) for name in (tempfile.gettempdir(), "/tmp", "/var/tmp")]
    for choice in choices:
        if all(folder.stat().st_mode & stat.S_IXOTH for folder in (choice, *choice.parents)):
            return choice
    sys.exit(f"mail_server.py: Postfix has users of its own, and none of them gets into {', '.join(map(str, choices))}")


@contextlib.contextmanager
def server_folder():
    """A folder that the server's own users can get into."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="brantel_mail_", dir=public_folder()))
    folder.chmod(0o755)
    try:
        yield folder
    finally:
        # Some of it belongs to those users.
        subprocess.run([*PRIVILEGED, "rm", "-rf", folder], check=True)


def show(raw: bytes) -> None:
    message = email.message_from_bytes(raw, policy=email.policy.default)
    for name in ("From", "To", "Subject", "Date"):
        print(f"{name}: {message[name]}")
    print(f"\n{message.get_content()}", flush=True)


def input_ends_within(seconds: float) -> bool:
    return bool(select.select([sys.stdin], [], [], seconds)[0])


def show_arrivals(server: MailServer, mailbox: str) -> None:
    shown = 0
    while not input_ends_within(0.1):
        messages = server.mail_in(mailbox)
        for raw in messages[shown:]:
            show(raw)
        shown = len(messages)


def main() -> None:
    address, mailbox = sys.argv[1:]
    with server_folder() as folder, MailServer(folder, address, [mailbox]).running() as server:
        print("listening", flush=True)
        show_arrivals(server, mailbox)


if __name__ == "__main__":
    main()
