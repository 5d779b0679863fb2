# SPDX-License-Identifier: Apache-2.0
"""A network made for one test: namespaces, bridges and cards, and cameras behind them.

Runs inside a user and network namespace of its own (tests/support/with-own-network): no packet meets a
real card. A bed holds a host namespace with its cards, a switch namespace with one bridge per card, and
one namespace for each camera program.
"""
import contextlib
import ctypes
import json
import os
import queue
import select
import signal
import socket
import subprocess
import threading
import time

BIN = os.environ.get("KEL_BIN", "")
os.environ["PATH"] += ":/usr/sbin:/sbin"
# A program that a sanitizer complains about tells so by a status that none of ours has.
SANITIZER_STATUS = 99
for _sanitizer in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"):
    os.environ[_sanitizer] = os.environ.get(_sanitizer, "") + ":exitcode=%d" % SANITIZER_STATUS
_LIBC = ctypes.CDLL(None, use_errno=True)
_CLONE_NEWNET = 0x40000000
_PR_SET_PDEATHSIG = 1
# Kept open: a path below /proc would lead to wherever the thread is at the moment.
_HOME = "/proc/self/fd/%d" % os.open("/proc/self/ns/net", os.O_RDONLY)


def program(name):
    return os.path.join(BIN, name)


def _die_with_parent():
    _LIBC.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


def _enter(path):
    with open(path, "rb") as namespace:
        if _LIBC.setns(namespace.fileno(), _CLONE_NEWNET) != 0:
            raise OSError(ctypes.get_errno(), "setns " + path)


class Namespace:
    """A network namespace, alive while its holder process is."""

    def __init__(self):
        own = os.stat("/proc/self/ns/net").st_ino
        self.holder = subprocess.Popen(["unshare", "-n", "sleep", "infinity"], preexec_fn=_die_with_parent)
        self.path = "/proc/%d/ns/net" % self.holder.pid
        while os.stat(self.path).st_ino == own:
            time.sleep(0.001)
        self.ip("link set lo up")
        self.shell("for f in all default; do echo 0 >/proc/sys/net/ipv4/conf/$f/rp_filter; done")

    @contextlib.contextmanager
    def entered(self):
        """Sockets made inside belong to the namespace for good."""
        _enter(self.path)
        try:
            yield
        finally:
            _enter(_HOME)

    def command(self, arguments):
        return ["nsenter", "--net=" + self.path] + list(arguments)

    def run(self, arguments, **options):
        return subprocess.run(self.command(arguments), capture_output=True, text=True, **options)

    def popen(self, arguments, **options):
        return subprocess.Popen(self.command(arguments), preexec_fn=_die_with_parent, **options)

    def ip(self, *lines):
        """Runs lines of the tool 'ip' in one go."""
        done = self.run(["ip", "-batch", "-"], input="\n".join(lines) + "\n")
        if done.returncode != 0:
            raise RuntimeError("ip: %s %s" % (lines, done.stderr))

    def shell(self, script):
        return self.run(["sh", "-c", script])

    def close(self):
        self.holder.kill()
        self.holder.wait()


class Bed:
    """Cards of a host, the wires behind them, and what hangs on the wires."""

    def __init__(self):
        self._closers = []
        self._ports = 0
        self.switch = self.namespace()
        self.host = self.namespace()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for closer in reversed(self._closers):
            closer()

    def on_exit(self, closer):
        self._closers.append(closer)

    def namespace(self):
        namespace = Namespace()
        self.on_exit(namespace.close)
        return namespace

    def wire(self, name):
        """A switch without anything on it."""
        self.switch.ip("link add %s type bridge" % name, "link set %s up" % name)

    def plug_in(self, namespace, card, wire, *addresses):
        """Gives a namespace a card on a wire. Returns the switch's port, for cable()."""
        self._ports += 1
        port = "port%d" % self._ports
        self.switch.ip("link add %s type veth peer name %s netns %d" % (port, card, namespace.holder.pid),
                       "link set %s master %s up" % (port, wire))
        namespace.ip(*["addr add %s brd + dev %s" % (address, card) for address in addresses],
                     "link set %s up" % card)
        return port

    def card(self, name, *addresses):
        """A card of the host on a wire of its own: card cam0 on wire w-cam0."""
        self.wire("w-" + name)
        return self.plug_in(self.host, name, "w-" + name, *addresses)

    def cable(self, port, is_plugged):
        self.switch.ip("link set %s %s" % (port, "up" if is_plugged else "down"))

    def start(self, namespace, arguments, **options):
        """A program that is ended with the bed."""
        process = namespace.popen(arguments, **options)

        def end():
            if process.poll() is None:
                process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            if process.returncode == SANITIZER_STATUS:
                raise AssertionError("a sanitizer complained about %s" % arguments[0])
            for stream in (process.stdin, process.stdout, process.stderr):
                if stream is not None:
                    stream.close()

        self.on_exit(end)
        return process

    def simulator(self, wires, *arguments):
        """kel-sim-cameras with a card on each of the wires: wire w-cam0 has its card sim-cam0."""
        namespace = self.namespace()
        for wire in wires:
            self.plug_in(namespace, wire.replace("w-", "sim-"), wire)
        return Simulator(self, namespace, ["--manage-addresses"] + list(arguments))

    def fake_cameras(self, wire, count, subnet="192.168.50", first=101):
        """Independent camera programs, each with a namespace, a wire's port and an identity of its own."""
        return [FakeCamera(self, wire, "%s.%d" % (subnet, first + i), "AF%03d" % (i + 1)) for i in range(count)]

    def list(self, *arguments, status=0, timeout=30):
        """kel-devices list --json, parsed."""
        done = self.host.run([program("kel-devices"), "list", "--json", *arguments], timeout=timeout)
        if done.returncode != status:
            raise AssertionError("kel-devices ended with %d: %s%s" % (done.returncode, done.stdout, done.stderr))
        listing = json.loads(done.stdout)
        listing["stderr"] = done.stderr
        return listing

    def watch(self, *arguments):
        return Watch(self, arguments)


class Simulator:
    """A running kel-sim-cameras, steered through its stdin."""

    def __init__(self, bed, namespace, arguments):
        self.namespace = namespace
        self.process = bed.start(namespace, [program("kel-sim-cameras"), "--stdin", *arguments],
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        line = self.process.stdout.readline()
        if not line.startswith("ready"):
            raise RuntimeError("the simulator did not start: " + line)

    def tell(self, *words):
        """Carries out a command; returns its lines."""
        self.process.stdin.write(" ".join(words) + "\n")
        self.process.stdin.flush()
        lines = []
        while True:
            line = self.process.stdout.readline().rstrip("\n")
            if line == "ok":
                return lines
            if line.startswith("error:") or not line:
                raise RuntimeError(line or "the simulator has ended")
            lines.append(line)

    def received(self, camera):
        """Commands that a camera received, by code."""
        words = self.tell("received", camera)[0].split()[1:]
        return {int(word.split("=")[0], 16): int(word.split("=")[1]) for word in words}


class FakeCamera:
    """arv-fake-gv-camera: answers with hardware address 0 and mask 0 until it is given better ones."""

    def __init__(self, bed, wire, address, serial, length=24):
        self.bed, self.address, self.serial = bed, address, serial
        self.namespace = bed.namespace()
        self.port = bed.plug_in(self.namespace, "eth0", wire, "%s/%d" % (address, length))
        self.process = bed.start(self.namespace, ["arv-fake-gv-camera-0.8", "-i", address, "-s", serial],
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def give_identity(self, mask=0xFFFFFF00):
        last = int(self.address.split(".")[3])
        with GvcpClient(self.bed.host, self.address) as client:
            client.wait_until_there()
            client.write(0x0008, 0x0211)
            client.write(0x000C, 0x22330000 + last)
            client.write(0x0034, mask)


class GvcpClient:
    """Another client of a camera, with a socket of its own."""

    def __init__(self, namespace, address):
        with namespace.entered():
            self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.settimeout(0.5)
        self.to = (address, 3956)
        self.id = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.socket.close()

    def ask(self, code, payload):
        self.id = self.id % 0xFFFF + 1
        header = bytes([0x42, 1]) + code.to_bytes(2, "big") + len(payload).to_bytes(2, "big")
        self.socket.sendto(header + self.id.to_bytes(2, "big") + payload, self.to)
        while True:
            answer = self.socket.recv(2048)
            if int.from_bytes(answer[6:8], "big") == self.id:
                return int.from_bytes(answer[0:2], "big"), answer[8:]

    def read(self, register):
        status, payload = self.ask(0x0080, register.to_bytes(4, "big"))
        return int.from_bytes(payload, "big") if status == 0 else None

    def write(self, register, value):
        return self.ask(0x0082, register.to_bytes(4, "big") + value.to_bytes(4, "big"))[0]

    def wait_until_there(self, seconds=5):
        end = time.monotonic() + seconds
        self.socket.settimeout(0.02)
        while time.monotonic() < end:
            with contextlib.suppress(OSError):
                self.read(0x0000)
                self.socket.settimeout(0.5)
                return
            time.sleep(0.005)
        raise RuntimeError("no camera at %s" % self.to[0])


class Watch:
    """A running kel-devices watch --json."""

    def __init__(self, bed, arguments):
        self.process = bed.start(bed.host, [program("kel-devices"), "watch", "--json", *arguments],
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.events = []
        self._lines = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self._lines.put((time.monotonic(), json.loads(line)))

    def wait_for(self, matches, seconds):
        """The first event that matches, or None when none came in time. Events before it are passed over."""
        end = time.monotonic() + seconds
        while True:
            try:
                when, event = self._lines.get(timeout=max(0.0, end - time.monotonic()))
            except queue.Empty:
                return None
            event["when"] = when
            self.events.append(event)
            if matches(event):
                return event

    def wait_for_device(self, kind, serial, seconds=3.0):
        return self.wait_for(lambda e: e["event"] == kind and e["device"]["serial"] == serial, seconds)


class Responder:
    """A camera of the test's own making: a function gets each datagram and gives the answers."""

    def __init__(self, bed, namespace, answer, answers_from_other_port=False):
        with namespace.entered():
            self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
            self._other = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
        self._socket.bind(("0.0.0.0", 3956))
        self._from = self._other if answers_from_other_port else self._socket
        self._stop = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(answer,), daemon=True)
        self._thread.start()
        bed.on_exit(self._close)

    def _run(self, answer):
        while not self._stop.is_set():
            if not select.select([self._socket], [], [], 0.05)[0]:
                continue
            datagram, sender = self._socket.recvfrom(2048)
            for bytes_ in answer(datagram):
                with contextlib.suppress(OSError):
                    self._from.sendto(bytes_, sender)

    def _close(self):
        self._stop.set()
        self._thread.join()
        self._socket.close()
        self._other.close()


def discovery_image(address, serial="R1", mac=b"\x02\x77\x00\x00\x00\x01", mask="255.255.255.0", model="Responder"):
    """The 248 bytes of a discovery answer."""
    image = bytearray(248)
    image[0:8] = bytes([0, 2, 0, 0, 0x80, 0, 0, 1])
    image[0x0A:0x10] = mac
    image[0x24:0x28] = socket.inet_aton(address)
    image[0x34:0x38] = socket.inet_aton(mask)
    for offset, text in ((0x48, "Test bed"), (0x68, model), (0xD8, serial)):
        image[offset:offset + len(text)] = text.encode()
    return bytes(image)


def acknowledge(command, payload, status=0):
    """The answer to a command datagram."""
    code = int.from_bytes(command[2:4], "big") + 1
    return (status.to_bytes(2, "big") + code.to_bytes(2, "big") + len(payload).to_bytes(2, "big") + command[6:8] +
            payload)
