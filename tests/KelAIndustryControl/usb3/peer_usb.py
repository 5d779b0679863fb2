# SPDX-License-Identifier: Apache-2.0
"""kel-devices on mocked USB devices: what it lists and in which states. Run on states.scene or on empty.scene."""
import json
import os
import subprocess
import sys
import unittest

KEL_DEVICES = os.path.join(os.environ["KEL_BIN"], "kel-devices")


def listing():
    return subprocess.run([KEL_DEVICES, "list", "--json", "--transport", "usb"], capture_output=True, text=True,
                          timeout=60, check=True)


class States(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.result = listing()
        cls.devices = {device["serial"]: device for device in json.loads(cls.result.stdout)["devices"]}

    def assert_states(self, expected):
        self.assertEqual({serial: self.devices[serial]["state"] for serial in expected}, expected)

    def test_only_whole_cameras_are_listed(self):
        self.assertEqual(sorted(self.devices), ["FREE2", "FREE3", "SHUT2", "SHUT3", "SLOW2", "SLOW3", "USED2", "USED3"])

    def test_free_cameras_are_told_by_their_usb_version(self):
        self.assert_states({"FREE3": 8, "FREE2": 13})

    def test_cameras_that_a_program_holds_are_in_use(self):
        self.assert_states({"USED3": 9, "USED2": 14})

    def test_cameras_on_a_link_that_is_too_slow_are_not_usable(self):
        self.assert_states({"SLOW3": 12, "SLOW2": 17})

    def test_cameras_without_permission_are_not_usable(self):
        self.assert_states({"SHUT3": 12, "SHUT2": 17})

    def test_each_camera_without_permission_is_told_once_with_what_helps(self):
        lines = [line for line in self.result.stderr.splitlines() if "no permission to open" in line]
        self.assertEqual(len(lines), 2)
        self.assertTrue(all("udev rule" in line for line in lines))


class Nothing(unittest.TestCase):
    def test_machine_without_usb_devices_has_no_cameras_and_no_complaint(self):
        result = listing()
        self.assertEqual(json.loads(result.stdout)["devices"], [])
        self.assertEqual(result.stderr, "")


if __name__ == "__main__":
    if not os.access(KEL_DEVICES, os.X_OK):
        sys.exit("KEL_BIN does not name the folder of kel-devices")
    unittest.main(verbosity=2)
