# SPDX-License-Identifier: Apache-2.0
"""kel-devices on hosts with several cards, addresses and subnets; states of cameras."""
import os
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
import bed_network  # noqa: E402
import bed_tests  # noqa: E402

FREE, IN_USE, UNREACHABLE, MULTICAST = 1, 2, 3, 6
REAL, VIRTUAL, OTHER = 0, 1, 2
DISCOVERY, WRITE_REGISTER, WRITE_MEMORY = 0x0002, 0x0082, 0x0086


class Cards(bed_tests.BedTest):
    def test_cameras_of_two_cards_hang_on_their_own(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.card("cam1", "10.20.30.1/24")
        self.bed.simulator(["w-cam0", "w-cam1"], "--camera", "A card=sim-cam0 address=192.168.50.11/24", "--camera",
                           "B card=sim-cam1 address=10.20.30.11/24")

        listing = self.bed.list()

        cards = {card["address"]: card for card in listing["cards"]}
        devices = {device["serial"]: device for device in listing["devices"]}
        self.assertEqual(sorted(cards), ["10.20.30.1", "192.168.50.1"])
        self.assertEqual(devices["A"]["hostAddress"], "192.168.50.1")
        self.assertEqual(devices["A"]["cardMac"], cards["192.168.50.1"]["mac"])
        self.assertEqual(devices["B"]["cardMac"], cards["10.20.30.1"]["mac"])
        self.assertEqual((devices["A"]["state"], devices["B"]["state"]), (FREE, FREE))

    def test_camera_that_both_cards_see_is_listed_once_through_the_card_that_fits(self):
        self.bed.wire("w-both")
        self.bed.plug_in(self.bed.host, "cam0", "w-both", "10.20.30.1/24")
        self.bed.plug_in(self.bed.host, "cam1", "w-both", "192.168.50.1/24")
        self.bed.simulator(["w-both"], "--camera", "A card=sim-both address=192.168.50.11/24")

        device = self.devices_by_serial()["A"]

        self.assertEqual(device["hostAddress"], "192.168.50.1")
        self.assertEqual(device["state"], FREE)

    def test_camera_that_two_fitting_cards_see_is_listed_once(self):
        self.bed.wire("w-both")
        self.bed.plug_in(self.bed.host, "cam0", "w-both", "192.168.50.1/24")
        self.bed.plug_in(self.bed.host, "cam1", "w-both", "192.168.50.2/24")
        self.bed.simulator(["w-both"], "--camera", "A card=sim-both address=192.168.50.11/24")

        device = self.devices_by_serial()["A"]

        self.assertIn(device["hostAddress"], ("192.168.50.1", "192.168.50.2"))
        self.assertEqual(device["state"], FREE)

    def test_each_address_of_a_card_finds_its_subnets_cameras(self):
        self.bed.card("cam0", "192.168.50.1/24", "10.20.30.1/24")
        self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=192.168.50.11/24", "--camera",
                           "B address=10.20.30.11/24")

        devices = self.devices_by_serial()

        self.assertEqual(devices["A"]["hostAddress"], "192.168.50.1")
        self.assertEqual(devices["B"]["hostAddress"], "10.20.30.1")
        self.assertEqual((devices["A"]["state"], devices["B"]["state"]), (FREE, FREE))

    def test_only_the_last_address_of_a_card_is_its_own(self):
        self.bed.card("cam0", "192.168.50.1/24", "10.20.30.1/24")
        self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=192.168.50.11/24", "--camera",
                           "B address=10.20.30.11/24")

        listing = self.bed.list()

        devices = {device["serial"]: device for device in listing["devices"]}
        self.assertEqual([card["address"] for card in listing["cards"]], ["10.20.30.1"])
        self.assertEqual(devices["A"]["cardMac"], "")
        self.assertEqual(devices["B"]["cardMac"], listing["cards"][0]["mac"])

    def test_two_link_local_cards_open_their_own_cameras(self):
        self.bed.card("cam0", "169.254.10.1/16")
        self.bed.card("cam1", "169.254.20.1/16")
        left = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=169.254.10.11/16")
        right = self.bed.simulator(["w-cam1"], "--card", "sim-cam1", "--camera",
                                   "B address=169.254.20.11/16 hold=169.254.20.99")

        devices = self.devices_by_serial()

        self.assertEqual((devices["A"]["hostAddress"], devices["A"]["state"]), ("169.254.10.1", FREE))
        self.assertEqual((devices["B"]["hostAddress"], devices["B"]["state"]), ("169.254.20.1", IN_USE))
        self.assertIn(0x0080, left.received("A"))
        self.assertIn(0x0080, right.received("B"))

    def test_two_cards_with_one_address_see_both_cameras(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.card("cam1", "192.168.50.1/24")
        self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=192.168.50.11/24")
        self.bed.simulator(["w-cam1"], "--card", "sim-cam1", "--camera", "B address=192.168.50.12/24")

        devices = self.devices_by_serial()

        self.assertEqual((devices["A"]["state"], devices["B"]["state"]), (FREE, FREE))

    def test_card_that_is_down_is_listed_without_an_address(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.card("cam1", "10.20.30.1/24")
        self.bed.host.ip("link set cam1 down")

        cards = {card["name"]: card for card in self.bed.list()["cards"]}

        self.assertEqual(sorted(cards), ["cam0[192.168.50.1]", "cam1[]"])
        self.assertEqual(cards["cam1[]"]["address"], "")

    def test_gateway_of_a_card_comes_from_the_routing_table(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.host.ip("route add default via 192.168.50.254 dev cam0")

        self.assertEqual(self.bed.list()["cards"][0]["gateway"], "192.168.50.254")

    def test_host_without_a_card_lists_nothing(self):
        listing = self.bed.list()

        self.assertEqual((listing["cards"], listing["devices"], listing["errors"]), ([], [], []))


class ForeignSubnet(bed_tests.BedTest):
    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.simulator = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=192.168.60.2/24",
                                            "--camera", "B address=192.168.50.11/24")

    def test_camera_is_listed_as_unreachable_with_its_address(self):
        device = self.devices_by_serial()["A"]

        self.assertEqual(device["state"], UNREACHABLE)
        self.assertEqual((device["address"], device["mask"]), ("192.168.60.2", "255.255.255.0"))
        self.assertEqual(device["hostAddress"], "192.168.50.1")

    def test_its_registers_are_not_asked_for(self):
        self.bed.list()

        self.assertEqual(list(self.simulator.received("A")), [DISCOVERY])

    def test_it_becomes_free_when_it_comes_into_the_subnet(self):
        self.simulator.tell("move", "A", "192.168.50.12", "24")

        self.assertEqual(self.devices_by_serial()["A"]["state"], FREE)

    def test_strict_reverse_path_filter_is_named_as_the_obstacle(self):
        self.bed.host.shell("echo 1 >/proc/sys/net/ipv4/conf/cam0/rp_filter")

        listing = self.bed.list()

        self.assertEqual([device["serial"] for device in listing["devices"]], ["B"])
        self.assertIn("cam0", listing["stderr"])
        self.assertIn("rp_filter", listing["stderr"])


class StatesAndPlaces(bed_tests.BedTest):
    def start(self, *cameras):
        self.bed.card("cam0", "192.168.50.1/24")
        arguments = []
        for camera in cameras:
            arguments += ["--camera", camera]
        return self.bed.simulator(["w-cam0"], "--card", "sim-cam0", *arguments)

    def device(self, camera):
        self.start(camera)
        return self.devices_by_serial()["A"]

    def test_free_camera_is_held_by_nobody(self):
        device = self.device("A address=192.168.50.11/24 name=\"Left eye\"")

        self.assertEqual((device["state"], device["heldBy"], device["userName"]), (FREE, "", "Left eye"))

    def test_holder_of_a_camera_is_named(self):
        device = self.device("A address=192.168.50.11/24 hold=192.168.50.77")

        self.assertEqual((device["state"], device["heldBy"]), (IN_USE, "192.168.50.77"))

    def test_exclusively_held_camera_is_in_use(self):
        self.assertEqual(self.device("A address=192.168.50.11/24 exclusive=192.168.50.77")["state"], IN_USE)

    def test_stream_to_a_group_is_multicast(self):
        device = self.device("A address=192.168.50.11/24 hold=192.168.50.77 multicast=239.1.2.3:5000")

        self.assertEqual((device["state"], device["stateText"]), (MULTICAST, "in use, multicast"))

    def test_stream_to_240_is_not_multicast(self):
        device = self.device("A address=192.168.50.11/24 hold=192.168.50.77 multicast=240.1.2.3:5000")

        self.assertEqual(device["state"], IN_USE)

    def test_heartbeat_that_ran_out_frees_the_camera(self):
        self.start("A address=192.168.50.11/24 heartbeat=500")
        with bed_network.GvcpClient(self.bed.host, "192.168.50.11") as client:
            self.assertEqual(client.write(0x0A00, 2), 0)
            self.assertEqual(self.devices_by_serial()["A"]["state"], IN_USE)
            watch = self.bed.watch("--interval", "100")
            free = watch.wait_for(lambda e: e["event"].startswith("device") and e["device"]["state"] == FREE, 3)

        self.assertIsNotNone(free)

    def test_device_that_is_no_transmitter_is_an_other_device(self):
        device = self.device("A address=192.168.50.11/24 class=peripheral")

        self.assertEqual(device["placement"], OTHER)

    def test_camera_of_this_host_is_virtual(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.start(self.bed.host, [bed_network.program("kel-sim-cameras"), "--card", "cam0", "--camera",
                                       "A address=192.168.50.1/24"], stdout=subprocess.PIPE).stdout.read(5)

        device = self.devices_by_serial()["A"]

        self.assertEqual((device["placement"], device["state"]), (VIRTUAL, FREE))

    def test_listing_writes_to_no_camera(self):
        simulator = self.start("A address=192.168.50.11/24", "B address=192.168.50.12/24 hold=192.168.50.77",
                               "C address=192.168.50.13/24 hold=192.168.50.77 multicast=239.1.2.3:5000")
        self.bed.list("--timeout", "1000")

        for camera in "ABC":
            received = simulator.received(camera)
            self.assertNotIn(WRITE_REGISTER, received)
            self.assertNotIn(WRITE_MEMORY, received)

    def test_cameras_with_one_serial_number_are_two(self):
        self.start("A address=192.168.50.11/24 serial=same", "B address=192.168.50.12/24 serial=same")

        devices = self.bed.list()["devices"]

        self.assertEqual([device["serial"] for device in devices], ["same", "same"])
        self.assertEqual(len({device["id"] for device in devices}), 2)


if __name__ == "__main__":
    bed_tests.main()
