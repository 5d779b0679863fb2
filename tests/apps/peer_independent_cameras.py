# SPDX-License-Identifier: Apache-2.0
"""kel-devices among cameras and clients that this project did not write."""
import os
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
import bed_network  # noqa: E402
import bed_tests  # noqa: E402

STATE_FREE, STATE_IN_USE, STATE_UNREACHABLE = 1, 2, 3
CAMERAS = 16


class SixteenFakeCameras(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bed = bed_network.Bed()
        cls.addClassCleanup(cls.bed.__exit__)
        cls.bed.card("cam0", "192.168.50.1/24")
        cls.cameras = cls.bed.fake_cameras("w-cam0", CAMERAS)
        for camera in cls.cameras:
            camera.give_identity()

    def devices(self):
        return {device["serial"]: device for device in self.bed.list()["devices"]}

    def test_every_camera_is_listed(self):
        self.assertEqual(sorted(self.devices()), sorted(camera.serial for camera in self.cameras))

    def test_every_camera_is_listed_in_ten_runs(self):
        for _ in range(10):
            self.assertEqual(len(self.bed.list()["devices"]), CAMERAS)

    def test_vendor_and_model_are_those_that_the_cameras_tell(self):
        for device in self.devices().values():
            self.assertEqual((device["vendor"], device["model"]), ("Aravis", "Fake"))
            self.assertEqual(device["transport"], "gige")

    def test_address_mask_and_host_address_are_right(self):
        devices = self.devices()
        for camera in self.cameras:
            device = devices[camera.serial]
            self.assertEqual(device["address"], camera.address)
            self.assertEqual(device["mask"], "255.255.255.0")
            self.assertEqual(device["hostAddress"], "192.168.50.1")

    def test_cameras_are_free_while_nobody_holds_them(self):
        self.assertEqual({device["state"] for device in self.devices().values()}, {STATE_FREE})

    def test_devices_hang_on_the_card_that_sees_them(self):
        listing = self.bed.list()
        self.assertEqual([card["address"] for card in listing["cards"]], ["192.168.50.1"])
        self.assertEqual({device["cardMac"] for device in listing["devices"]}, {listing["cards"][0]["mac"]})

    def test_camera_is_in_use_while_another_client_holds_control(self):
        with bed_network.GvcpClient(self.bed.host, self.cameras[3].address) as client:
            self.assertEqual(client.write(0x0A00, 2), 0)
            held = self.devices()
            client.write(0x0A00, 0)

        self.assertEqual(held["AF004"]["state"], STATE_IN_USE)
        self.assertEqual(held["AF004"]["stateText"], "in use")
        self.assertEqual(held["AF005"]["state"], STATE_FREE)
        self.assertEqual(self.devices()["AF004"]["state"], STATE_FREE)

    def test_another_client_can_take_a_camera_that_was_listed(self):
        self.devices()
        done = self.bed.host.run(["arv-tool-0.8", "-a", self.cameras[0].address, "control", "DeviceVendorName"])
        self.assertIn("Aravis", done.stdout)


class FakeCamerasThatShareANamespace(bed_tests.BedTest):
    """They answer a broadcast from the namespace's first address: what the answer says counts."""

    def test_address_is_what_the_answer_says(self):
        self.bed.card("cam0", "192.168.50.1/24")
        namespace = self.bed.namespace()
        addresses = ["192.168.50.%d" % last for last in (101, 102, 103)]
        self.bed.plug_in(namespace, "eth0", "w-cam0", *[address + "/24" for address in addresses])
        for number, address in enumerate(addresses):
            self.bed.start(namespace, ["arv-fake-gv-camera-0.8", "-i", address, "-s", "SH%d" % number], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
        for address in addresses:
            with bed_network.GvcpClient(self.bed.host, address) as client:
                client.wait_until_there()

        devices = self.devices_by_serial()

        self.assertEqual([devices["SH%d" % number]["address"] for number in range(3)], addresses)
        self.assertEqual([devices["SH%d" % number]["state"] for number in range(3)], [STATE_FREE] * 3)


class FakeCamerasBehindSeveralCards(bed_tests.BedTest):
    """A camera of its own namespace each, as real ones are on their own boards."""

    def camera(self, wire, address, serial):
        camera = bed_network.FakeCamera(self.bed, wire, address, serial)
        camera.give_identity()
        return camera

    def test_cameras_of_two_cards_hang_on_their_own(self):
        self.bed.card("cam0", "192.168.50.1/24")
        self.bed.card("cam1", "10.20.30.1/24")
        self.camera("w-cam0", "192.168.50.11", "AF001")
        self.camera("w-cam1", "10.20.30.12", "AF002")

        listing = self.bed.list()

        cards = {card["address"]: card["mac"] for card in listing["cards"]}
        seen = {device["serial"]: (device["hostAddress"], device["cardMac"]) for device in listing["devices"]}
        self.assertEqual(seen, {"AF001": ("192.168.50.1", cards["192.168.50.1"]),
                                "AF002": ("10.20.30.1", cards["10.20.30.1"])})

    def test_camera_that_both_cards_see_is_listed_once_through_the_card_that_fits(self):
        self.bed.wire("w-both")
        self.bed.plug_in(self.bed.host, "cam0", "w-both", "10.20.30.1/24")
        self.bed.plug_in(self.bed.host, "cam1", "w-both", "192.168.50.1/24")
        camera = self.camera("w-both", "192.168.50.11", "AF001")
        # The other card's subnet is the neighbour's: the camera's answer finds its way to both.
        camera.namespace.ip("route add 10.20.30.0/24 dev eth0")

        device = self.devices_by_serial()["AF001"]

        self.assertEqual((device["hostAddress"], device["state"]), ("192.168.50.1", STATE_FREE))

    def test_each_address_of_a_card_finds_its_subnets_cameras(self):
        self.bed.card("cam0", "192.168.50.1/24", "10.20.30.1/24")
        self.camera("w-cam0", "192.168.50.11", "AF001")
        self.camera("w-cam0", "10.20.30.12", "AF002")

        devices = self.devices_by_serial()

        self.assertEqual((devices["AF001"]["hostAddress"], devices["AF001"]["state"]), ("192.168.50.1", STATE_FREE))
        self.assertEqual((devices["AF002"]["hostAddress"], devices["AF002"]["state"]), ("10.20.30.1", STATE_FREE))

    def test_camera_of_a_foreign_subnet_is_listed_as_unreachable(self):
        self.bed.card("cam0", "192.168.50.1/24")
        camera = bed_network.FakeCamera(self.bed, "w-cam0", "192.168.60.2", "AF001")
        camera.namespace.ip("route add 192.168.50.0/24 dev eth0")
        self.bed.host.ip("route add 192.168.60.0/24 dev cam0")
        camera.give_identity()

        device = self.devices_by_serial()["AF001"]

        self.assertEqual((device["address"], device["hostAddress"]), ("192.168.60.2", "192.168.50.1"))
        self.assertEqual(device["state"], STATE_UNREACHABLE)


class ViewerThatGrabs(bed_tests.BedTest):
    def test_camera_is_in_use_meanwhile(self):
        self.bed.card("cam0", "192.168.50.1/24")
        camera, other = self.bed.fake_cameras("w-cam0", 2)
        camera.give_identity()
        other.give_identity()
        viewer = self.bed.start(self.bed.host, ["arv-camera-test-0.8", "-n", "Aravis-Fake-" + camera.serial],
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        with bed_network.GvcpClient(self.bed.host, camera.address) as client:
            while client.read(0x0A00) == 0:
                self.assertIsNone(viewer.poll(), "the viewer has ended")

        devices = self.devices_by_serial()

        self.assertEqual(devices[camera.serial]["state"], STATE_IN_USE)
        self.assertEqual(devices[other.serial]["state"], STATE_FREE)


class CableOfAFakeCamera(bed_tests.BedTest):
    def test_unplugged_camera_leaves_within_three_seconds_and_returns_with_its_number(self):
        self.bed.card("cam0", "192.168.50.1/24")
        cameras = self.bed.fake_cameras("w-cam0", 3)
        for camera in cameras:
            camera.give_identity()
        watch = self.bed.watch()
        new = watch.wait_for_device("deviceNew", "AF002", 5)
        self.assertIsNotNone(new)

        self.bed.cable(cameras[1].port, False)
        gone = watch.wait_for_device("deviceRemoved", "AF002", 3)
        self.bed.cable(cameras[1].port, True)
        back = watch.wait_for_device("deviceNew", "AF002", 3)

        self.assertIsNotNone(gone, "still there after 3 s")
        self.assertIsNotNone(back, "not back after 3 s")
        self.assertEqual(back["device"]["id"], new["device"]["id"])
        others = [event for event in watch.events
                  if event["event"] == "deviceRemoved" and event["device"]["serial"] != "AF002"]
        self.assertEqual(others, [])


if __name__ == "__main__":
    bed_tests.main()
