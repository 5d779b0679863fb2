# SPDX-License-Identifier: Apache-2.0
"""kel-devices watch while cameras and cards come, go and change."""
import os
import signal
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
import bed_network  # noqa: E402
import bed_tests  # noqa: E402

FREE, IN_USE, UNREACHABLE, MULTICAST = 1, 2, 3, 6
A_WHILE = 3.0


class Watching(bed_tests.BedTest):
    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.simulator = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--fleet",
                                            "A 4 address=192.168.50.11/24")

    def start(self, *arguments):
        watch = self.bed.watch("--transport", "gige", *arguments)
        self.new = {}
        while len(self.new) < 4:
            event = watch.wait_for(lambda e: e["event"] == "deviceNew", 5)
            self.assertIsNotNone(event, "not all cameras were reported")
            self.new[event["device"]["serial"]] = event["device"]
        return watch

    def wait_for_state(self, watch, serial, state):
        return watch.wait_for(lambda e: e["event"] == "deviceUpdated" and e["device"]["serial"] == serial and
                              e["device"]["state"] == state, A_WHILE)

    def test_unplugged_camera_leaves_and_returns_with_its_number(self):
        watch = self.start()

        self.simulator.tell("unplug", "A2")
        self.assertIsNotNone(watch.wait_for_device("deviceRemoved", "A0002", A_WHILE))
        self.simulator.tell("plug", "A2")
        back = watch.wait_for_device("deviceNew", "A0002", A_WHILE)

        self.assertIsNotNone(back)
        self.assertEqual(back["device"]["id"], self.new["A0002"]["id"])

    def test_removal_is_reported_once(self):
        watch = self.start("--interval", "100")

        self.simulator.tell("unplug", "A2")
        self.assertIsNotNone(watch.wait_for_device("deviceRemoved", "A0002", A_WHILE))

        self.assertIsNone(watch.wait_for_device("deviceRemoved", "A0002", 1.0))

    def test_camera_that_another_host_takes_is_in_use_and_free_again(self):
        watch = self.start("--interval", "200")

        self.simulator.tell("hold", "A1", "192.168.50.77")
        held = self.wait_for_state(watch, "A0001", IN_USE)
        self.simulator.tell("multicast", "A1", "239.1.2.3", "5000")
        streaming = self.wait_for_state(watch, "A0001", MULTICAST)
        self.simulator.tell("release", "A1")
        free = self.wait_for_state(watch, "A0001", FREE)

        self.assertIsNotNone(held)
        self.assertEqual(held["device"]["heldBy"], "192.168.50.77")
        self.assertIsNotNone(streaming)
        self.assertIsNotNone(free)
        self.assertEqual(free["device"]["heldBy"], "")

    def test_camera_that_moves_to_another_subnet_becomes_unreachable(self):
        watch = self.start("--interval", "200")

        self.simulator.tell("move", "A3", "192.168.60.3", "255.255.255.0")
        moved = self.wait_for_state(watch, "A0003", UNREACHABLE)

        self.assertIsNotNone(moved)
        self.assertEqual(moved["device"]["address"], "192.168.60.3")
        self.assertEqual(moved["device"]["id"], self.new["A0003"]["id"])

    def test_new_name_of_a_camera_is_a_change(self):
        watch = self.start("--interval", "200")

        self.simulator.tell("name", "A4", '"Right eye"')
        renamed = watch.wait_for(lambda e: e["event"] == "deviceUpdated" and e["device"]["userName"] == "Right eye",
                                 A_WHILE)

        self.assertIsNotNone(renamed)
        self.assertEqual(renamed["device"]["id"], self.new["A0004"]["id"])

    def test_nothing_is_printed_while_nothing_changes(self):
        watch = self.start("--interval", "100")

        self.assertIsNone(watch.wait_for(lambda event: True, 1.0))

    def test_every_event_is_printed_on_request(self):
        watch = self.start("--interval", "100", "--all")
        self.assertIsNotNone(watch.wait_for(lambda event: event["event"] == "passEnd", A_WHILE))

        kinds = []
        while kinds.count("passEnd") < 1:
            event = watch.wait_for(lambda event: True, A_WHILE)
            self.assertEqual((event["transport"], event["code"]), ("gige", 0))
            kinds.append(event["event"])

        self.assertEqual(kinds, ["passBegin", "cardUpdated"] + ["deviceUpdated"] * 4 + ["passEnd"])

    def test_lost_datagrams_remove_nobody(self):
        watch = self.start("--interval", "100")

        for _ in range(5):
            self.simulator.tell("lose", "all", "3", "broadcast")
            self.assertIsNone(watch.wait_for(lambda event: event["event"] == "deviceRemoved", 0.5))

    def test_one_lost_register_answer_changes_no_state(self):
        watch = self.start("--interval", "100")

        for _ in range(5):
            self.simulator.tell("lose", "all", "1", "registers")
            self.assertIsNone(watch.wait_for(lambda event: event["event"] != "passEnd", 0.5))

    def test_slow_camera_stays_listed(self):
        watch = self.start("--interval", "200")

        self.simulator.tell("delay", "A1", "900", "discovery")

        self.assertIsNone(watch.wait_for(lambda event: event["event"] == "deviceRemoved", 4))

    def test_card_that_is_taken_out_takes_its_cameras_along(self):
        self.bed.card("cam1", "10.20.30.1/24")
        self.bed.simulator(["w-cam1"], "--card", "sim-cam1", "--camera", "B address=10.20.30.11/24")
        watch = self.start("--interval", "200")
        if "B" not in self.new:
            self.assertIsNotNone(watch.wait_for_device("deviceNew", "B"))

        self.bed.host.ip("link del cam1")

        self.assertIsNotNone(watch.wait_for(lambda e: e["event"] == "cardRemoved", A_WHILE))
        self.assertIsNotNone(watch.wait_for_device("deviceRemoved", "B", A_WHILE))
        self.assertIsNone(watch.process.poll())

    def test_card_that_is_put_in_is_found(self):
        watch = self.start("--interval", "200")

        self.bed.card("cam1", "10.20.30.1/24")
        card = watch.wait_for(lambda e: e["event"] == "cardNew" and e["card"]["address"] == "10.20.30.1", A_WHILE)

        self.assertIsNotNone(card)

    def test_interrupt_ends_it_cleanly(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            watch = self.start()
            watch.process.send_signal(number)
            self.assertEqual(watch.process.wait(3), 0)

    def test_interrupt_inside_a_pass_does_not_wait_for_its_end(self):
        self.simulator.tell("lose", "all", "all")
        watch = self.bed.watch("--all", "--transport", "gige")
        self.assertIsNotNone(watch.wait_for(lambda event: event["event"] == "passBegin", A_WHILE))

        began = time.monotonic()
        watch.process.send_signal(signal.SIGTERM)
        watch.process.wait(3)

        self.assertLess(time.monotonic() - began, 0.5)


if __name__ == "__main__":
    bed_tests.main()
