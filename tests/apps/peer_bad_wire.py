# SPDX-License-Identifier: Apache-2.0
"""kel-devices on a wire that loses, delays and repeats, among hostile answers, and while a network dies."""
import json
import os
import random
import sys
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
import bed_network  # noqa: E402
import bed_tests  # noqa: E402
from bed_network import acknowledge, discovery_image  # noqa: E402

FREE, IN_USE = 1, 2
DISCOVERY, READ_REGISTER = 0x0002, 0x0080


def code_of(command):
    return int.from_bytes(command[2:4], "big")


class LossyWire(bed_tests.BedTest):
    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.simulator = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--fleet",
                                            "A 8 address=192.168.50.11/24")

    def test_camera_that_misses_the_first_request_is_found(self):
        self.simulator.tell("lose", "all", "1", "broadcast")

        self.assertEqual(len(self.devices_by_serial()), 8)

    def test_lost_question_for_the_privilege_is_repeated(self):
        self.simulator.tell("hold", "A1")
        self.simulator.tell("lose", "all", "1", "registers")

        devices = self.devices_by_serial()

        self.assertEqual(devices["A0001"]["state"], IN_USE)
        self.assertEqual(devices["A0002"]["state"], FREE)

    def test_repeated_answers_are_one_device(self):
        self.simulator.tell("duplicate", "all", "5")

        self.assertEqual(len(self.devices_by_serial()), 8)

    def test_answer_after_900_ms_is_in_the_list_of_a_longer_time(self):
        self.simulator.tell("delay", "A3", "900", "discovery")

        self.assertIn("A0003", self.devices_by_serial("--timeout", "2000"))

    def test_answers_that_are_spread_over_a_second_are_all_in_the_list_of_a_longer_time(self):
        for number in range(1, 9):
            self.simulator.tell("delay", "A%d" % number, str(number * 120), "discovery")

        self.assertEqual(len(self.devices_by_serial("--timeout", "2500")), 8)

    def test_pending_acknowledge_is_waited_for(self):
        self.simulator.tell("hold", "A1")
        self.simulator.tell("pending", "all", "300")

        devices = self.devices_by_serial()

        self.assertEqual(devices["A0001"]["state"], IN_USE)
        self.assertEqual(devices["A0002"]["state"], FREE)

    def test_camera_that_answers_discovery_only_is_listed_and_not_free(self):
        self.simulator.tell("lose", "A5", "all", "registers")

        devices = self.devices_by_serial()

        self.assertEqual(len(devices), 8)
        self.assertEqual(devices["A0005"]["state"], IN_USE)
        self.assertEqual(devices["A0006"]["state"], FREE)

    def test_camera_that_dies_between_discovery_and_question_does_no_harm(self):
        stop = threading.Event()

        def plug_and_unplug():
            random.seed(7)
            while not stop.is_set():
                self.simulator.tell("unplug", "A5")
                time.sleep(random.uniform(0.001, 0.02))
                self.simulator.tell("plug", "A5")
                time.sleep(random.uniform(0.001, 0.02))

        thread = threading.Thread(target=plug_and_unplug)
        thread.start()
        try:
            for _ in range(10):
                devices = self.devices_by_serial()
                others = {serial: device["state"] for serial, device in devices.items() if serial != "A0005"}
                self.assertEqual(len(others), 7)
                self.assertEqual(set(others.values()), {FREE})
        finally:
            stop.set()
            thread.join()


class HostileAnswers(bed_tests.BedTest):
    """Beside a good camera stands one that answers as the test says."""

    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "good address=192.168.50.11/24")
        self.namespace = self.bed.namespace()
        self.bed.plug_in(self.namespace, "eth0", "w-cam0", "192.168.50.66/24")

    def list_with(self, answer, **options):
        """The devices but the good one, which is always there."""
        bed_network.Responder(self.bed, self.namespace, answer, **options)
        devices = self.devices_by_serial()
        self.assertEqual(devices.pop("good")["state"], FREE)
        return devices

    def discovery_only(self, spoil):
        """Answers a discovery by what spoil() makes of the right answer."""
        def answer(command):
            if code_of(command) != DISCOVERY:
                return []
            return spoil(acknowledge(command, discovery_image("192.168.50.66")))
        return answer

    def test_right_answer_would_be_listed(self):
        self.assertEqual(list(self.list_with(self.discovery_only(lambda right: [right]))), ["R1"])

    def test_answers_cut_at_every_length_are_no_device(self):
        self.assertEqual(self.list_with(self.discovery_only(lambda right: [right[:n] for n in range(256)])), {})

    def test_answers_cut_at_every_length_spoil_no_right_one(self):
        devices = self.list_with(self.discovery_only(lambda right: [right[:n] for n in range(257)]))

        self.assertEqual(list(devices), ["R1"])

    def test_payload_cut_with_a_fitting_length_is_no_device(self):
        def spoil(right):
            return [right[:4] + n.to_bytes(2, "big") + right[6:8 + n] for n in range(248)]

        self.assertEqual(self.list_with(self.discovery_only(spoil)), {})

    def test_length_that_promises_more_than_there_is_is_no_device(self):
        def spoil(right):
            return [right[:4] + n.to_bytes(2, "big") + right[6:] for n in (249, 256, 1000, 0x7FFF, 0xFFFF)]

        self.assertEqual(self.list_with(self.discovery_only(spoil)), {})

    def test_longer_answer_is_a_device(self):
        def spoil(right):
            return [right[:4] + (248 + 12).to_bytes(2, "big") + right[6:] + b"more to come"]

        self.assertEqual(list(self.list_with(self.discovery_only(spoil))), ["R1"])

    def test_wrong_ids_are_no_device(self):
        def spoil(right):
            number = int.from_bytes(right[6:8], "big")
            wrong = [(number + shift) & 0xFFFF for shift in (100, 0x8000)] + [0]
            return [right[:6] + id_.to_bytes(2, "big") + right[8:] for id_ in wrong]

        self.assertEqual(self.list_with(self.discovery_only(spoil)), {})

    def test_wrong_codes_are_no_device(self):
        def spoil(right):
            return [right[:2] + code.to_bytes(2, "big") + right[4:] for code in (0, 2, 5, 0x81, 0x89, 0xFFFF)]

        self.assertEqual(self.list_with(self.discovery_only(spoil)), {})

    def test_error_status_is_no_device(self):
        def spoil(right):
            return [status.to_bytes(2, "big") + right[2:] for status in (0x8001, 0x8006, 0x8007, 0x8FFF)]

        self.assertEqual(self.list_with(self.discovery_only(spoil)), {})

    def test_answer_from_another_port_is_no_device(self):
        answer = self.discovery_only(lambda right: [right])

        self.assertEqual(self.list_with(answer, answers_from_other_port=True), {})

    def test_random_datagrams_are_no_device(self):
        random.seed(11)
        self.assertEqual(self.list_with(lambda command: [random.randbytes(random.randrange(600)) for _ in range(200)]),
                         {})

    def test_receiver_is_an_other_device(self):
        def spoil(right):
            return [right[:12] + bytes([0x90]) + right[13:]]

        self.assertEqual(self.list_with(self.discovery_only(spoil))["R1"]["placement"], 2)

    def test_text_fields_without_an_end_are_cut_at_their_width(self):
        image = discovery_image("192.168.50.66")
        image = image[:0x48] + b"V" * 32 + b"M" * 32 + b"D" * 32 + b"I" * 48 + b"S" * 16 + b"U" * 16

        devices = self.list_with(lambda command: [acknowledge(command, image)] if code_of(command) == DISCOVERY else [])

        device = devices["S" * 16]
        self.assertEqual((device["vendor"], device["model"], device["userName"]), ("V" * 32, "M" * 32, "U" * 16))

    def test_bytes_that_are_no_text_become_replacement_characters(self):
        image = discovery_image("192.168.50.66")
        image = image[:0x48] + b"\xff\xfe\x80 vendor".ljust(32, b"\0") + image[0x68:]

        device = self.list_with(
            lambda command: [acknowledge(command, image)] if code_of(command) == DISCOVERY else [])["R1"]

        self.assertEqual(device["vendor"], "\ufffd\ufffd\ufffd vendor")

    def test_terminal_codes_and_quotes_stay_text(self):
        name = b'\x1b[31m"\\%s\n'
        image = discovery_image("192.168.50.66")
        image = image[:0xE8] + name.ljust(16, b"\0")
        bed_network.Responder(self.bed, self.namespace, lambda command: [acknowledge(command, image)]
                              if code_of(command) == DISCOVERY else [])

        device = self.devices_by_serial()["R1"]
        table = self.bed.host.run([bed_network.program("kel-devices"), "list"]).stdout

        self.assertEqual(device["userName"], name.decode())
        self.assertNotIn("\x1b", table)
        self.assertIn('\ufffd[31m"\\%s\ufffd', table)

    def test_answers_to_the_privilege_question_cut_at_every_length_leave_it_unanswered(self):
        def answer(command):
            if code_of(command) == DISCOVERY:
                return [acknowledge(command, discovery_image("192.168.50.66"))]
            right = acknowledge(command, b"\0" * (len(command) - 8))
            return [right[:n] for n in range(len(right))]

        self.assertEqual(self.list_with(answer)["R1"]["state"], IN_USE)

    def test_privilege_answer_with_a_wrong_id_is_not_believed(self):
        def answer(command):
            if code_of(command) == DISCOVERY:
                return [acknowledge(command, discovery_image("192.168.50.66"))]
            right = acknowledge(command, b"\0" * (len(command) - 8))
            held = b"\0\0\0\x02" * ((len(command) - 8) // 4)
            return [right[:6] + b"\xAA\x55" + right[8:], acknowledge(command, held)]

        self.assertEqual(self.list_with(answer)["R1"]["state"], IN_USE)

    def test_flood_of_answers_does_not_keep_the_list_from_ending(self):
        stop = threading.Event()

        def flood(command):
            if code_of(command) == DISCOVERY:
                begin = time.monotonic()
                while time.monotonic() - begin < 3 and not stop.is_set():
                    yield acknowledge(command, discovery_image("192.168.50.66"))

        bed_network.Responder(self.bed, self.namespace, flood)
        began = time.monotonic()
        self.bed.list(timeout=10)
        took = time.monotonic() - began
        stop.set()

        self.assertLess(took, 2.5)

    def test_many_invented_cameras_are_bounded(self):
        def invent(command):
            if code_of(command) != DISCOVERY:
                return []
            return [acknowledge(command, discovery_image("192.168.50.66", "R%d" % n,
                                                         b"\x02\x77\x00\x00" + n.to_bytes(2, "big")))
                    for n in range(600)]

        bed_network.Responder(self.bed, self.namespace, invent)
        listing = self.bed.list()

        self.assertEqual(len(listing["devices"]), 256)


class DyingNetwork(bed_tests.BedTest):
    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--fleet", "A 20 address=192.168.50.11/24")

    def list_while(self, *lines):
        for delay in (0.0, 0.005, 0.01, 0.02, 0.05, 0.1):
            timer = threading.Timer(delay, lambda: self.bed.host.ip(*lines[0]))
            timer.start()
            began = time.monotonic()
            done = self.bed.host.run([bed_network.program("kel-devices"), "list", "--json"], timeout=20)
            took = time.monotonic() - began
            timer.join()
            self.bed.host.ip(*lines[1])

            self.assertIn(done.returncode, (0, 1), done.stderr)
            self.assertLess(took, 3.5)
            for device in json.loads(done.stdout)["devices"]:
                self.assertEqual(device["vendor"], "Simulated Cameras")
                self.assertRegex(device["serial"], "^A00[0-2][0-9]$")

    def test_card_that_goes_down_during_a_pass_does_no_harm(self):
        self.list_while(["link set cam0 down"], ["link set cam0 up"])

    def test_address_that_goes_during_a_pass_does_no_harm(self):
        self.list_while(["addr del 192.168.50.1/24 dev cam0"], ["addr add 192.168.50.1/24 brd + dev cam0"])

    def test_card_that_is_taken_out_during_a_pass_does_no_harm(self):
        self.bed.wire("w-other")
        self.bed.plug_in(self.bed.host, "cam1", "w-other", "10.20.30.1/24")
        timer = threading.Timer(0.02, lambda: self.bed.host.ip("link del cam1"))
        timer.start()
        listing = self.bed.list()
        timer.join()

        self.assertEqual(len(listing["devices"]), 20)


class ManyCameras(bed_tests.BedTest):
    def start(self, count):
        self.bed.card("cam0", "10.20.0.1/16")
        return self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--fleet", "A %d address=10.20.1.1/16" % count)

    def test_hundred_cameras_are_all_listed_in_five_runs(self):
        self.start(100)
        for _ in range(5):
            devices = self.devices_by_serial()
            self.assertEqual(len(devices), 100)
            self.assertEqual({device["state"] for device in devices.values()}, {FREE})

    def test_of_300_cameras_256_are_listed_and_the_rest_is_told(self):
        self.start(300)

        listing = self.bed.list()

        self.assertEqual(len(listing["devices"]), 256)
        self.assertEqual({device["state"] for device in listing["devices"]}, {FREE})
        self.assertIn("44", listing["stderr"])

    def test_the_same_256_of_300_cameras_are_listed_every_time(self):
        self.start(300)

        lists = [[device["serial"] for device in self.bed.list()["devices"]] for _ in range(3)]

        self.assertEqual(lists[0], lists[1])
        self.assertEqual(lists[0], lists[2])

    def test_256_cameras_stay_while_a_watch_goes_on(self):
        self.start(256)
        watch = self.bed.watch("--transport", "gige", "--interval", "200")
        for _ in range(256):
            self.assertIsNotNone(watch.wait_for(lambda event: event["event"] == "deviceNew", 5))

        self.assertIsNone(watch.wait_for(lambda event: True, 3))


if __name__ == "__main__":
    bed_tests.main()
