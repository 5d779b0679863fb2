# SPDX-License-Identifier: Apache-2.0
"""kel-devices list with real GenTL producers, one of which falls over."""
import json
import os
import subprocess
import sys
import unittest

KEL_DEVICES = os.path.join(os.environ["KEL_BIN"], "kel-devices")
PRODUCERS = os.path.join(os.environ["KEL_BIN"], "..", "cti")


def producer(name):
    return os.path.realpath(os.path.join(PRODUCERS, name))


def listing(*names):
    command = [KEL_DEVICES, "list", "--json", "--transport", "gentl"]
    for name in names:
        command += ["--cti", producer(name)]
    return subprocess.run(command, capture_output=True, text=True, timeout=60, check=False)


class Producers(unittest.TestCase):
    def test_interfaces_and_devices_of_two_producers_are_listed(self):
        result = listing("KelFGSampleGEV.cti", "KelFGSampleCML.cti")
        found = json.loads(result.stdout)
        interfaces = {interface["identifier"]: interface for interface in found["interfaces"]}
        devices = {device["serial"]: device for device in found["devices"]}

        self.assertEqual(result.returncode, 0)
        self.assertEqual(sorted(interfaces), ["cml-port-0", "sample-if-0", "sample-if-1"])
        self.assertEqual(interfaces["cml-port-0"]["producer"], producer("KelFGSampleCML.cti"))
        self.assertEqual(interfaces["sample-if-1"]["producer"], producer("KelFGSampleGEV.cti"))
        self.assertEqual(sorted(devices), ["L8001", "S00", "S01", "S10"])
        self.assertEqual(devices["S10"]["interfaceId"], interfaces["sample-if-1"]["id"])
        self.assertEqual(devices["S00"]["transport"], "gentl")
        self.assertEqual(devices["S00"]["userName"], "left")

    def test_producer_that_falls_over_costs_its_own_interfaces_only(self):
        result = listing("BadCrashOnLoad.cti", "KelFGSampleCML.cti")
        found = json.loads(result.stdout)

        self.assertEqual(result.returncode, 0)
        self.assertEqual([interface["identifier"] for interface in found["interfaces"]], ["cml-port-0"])
        self.assertEqual([device["serial"] for device in found["devices"]], ["L8001"])
        self.assertEqual(result.stderr.count("BadCrashOnLoad.cti is refused"), 1)

    def test_full_list_is_cut_with_a_line(self):
        result = listing("BigSample.cti")

        self.assertEqual(result.returncode, 0)
        self.assertEqual(len(json.loads(result.stdout)["devices"]), 256)
        self.assertEqual(result.stderr.count("left out: 44"), 1)

    def test_missing_producer_is_told(self):
        result = listing("none.cti")

        self.assertNotEqual(result.stderr, "")
        self.assertEqual(len(result.stderr.splitlines()), 1)


if __name__ == "__main__":
    if not os.access(KEL_DEVICES, os.X_OK):
        sys.exit("KEL_BIN does not name the folder of kel-devices")
    unittest.main(verbosity=2)
