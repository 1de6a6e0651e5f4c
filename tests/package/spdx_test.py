#!/usr/bin/env python3
"""Tries tools/dev/spdx.py on a small archive.

spdx_test.py <root of the repository> <folder to work in>
"""
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tarfile
import unittest

ROOT = pathlib.Path(sys.argv[1])
WORK = pathlib.Path(sys.argv[2])
TOOL = ROOT / "tools/dev/spdx.py"
sys.path.insert(0, str(TOOL.parent))
sys.dont_write_bytecode = True
import spdx  # noqa: E402

NOTICES = """
| software | linked into | terms |
| --- | --- | --- |
| Parser (header-only) | the tool `tessaport`, the test kit | MIT |
| Streams | the static libraries `VelmoraLogging` and `VelmoraIO` | Boost Software License 1.0 |
"""


class Spdx(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(WORK, ignore_errors=True)
        (WORK / "VelmoraTessaport-1.2.3/lib/über").mkdir(parents=True)
        self.notices(NOTICES)
        self.files = {"lib/library.so": b"\x7fELF", "lib/über/text file.txt": b"text\n", "empty": b""}
        for name, contents in self.files.items():
            (WORK / "VelmoraTessaport-1.2.3" / name).write_bytes(contents)
        os.symlink("library.so", WORK / "VelmoraTessaport-1.2.3/lib/link.so")
        self.archive = WORK / "VelmoraTessaport-1.2.3.tar.gz"
        with tarfile.open(self.archive, "w:gz") as archive:
            archive.add(WORK / "VelmoraTessaport-1.2.3", "VelmoraTessaport-1.2.3")

    def notices(self, text):
        (WORK / "THIRD-PARTY-NOTICES.md").write_text(text)

    def run_tool(self):
        return subprocess.run([sys.executable, TOOL, WORK, "1.2.3", self.archive], capture_output=True, text=True,
                              env={**os.environ, "SOURCE_DATE_EPOCH": "1700000000"}, check=False)

    def made(self):
        result = self.run_tool()
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads((WORK / "VelmoraTessaport-1.2.3.tar.gz.spdx.json").read_text(encoding="utf-8"))

    def test_lists_every_file_with_its_checksums(self):
        listed = {entry["fileName"]: entry["checksums"] for entry in self.made()["files"]}
        self.assertEqual(set(listed), {f"./VelmoraTessaport-1.2.3/{name}" for name in self.files})
        for name, contents in self.files.items():
            self.assertIn({"algorithm": "SHA256", "checksumValue": hashlib.sha256(contents).hexdigest()},
                          listed[f"./VelmoraTessaport-1.2.3/{name}"])
            self.assertIn({"algorithm": "SHA1", "checksumValue": hashlib.sha1(contents).hexdigest()},
                          listed[f"./VelmoraTessaport-1.2.3/{name}"])

    def test_has_what_the_format_requires(self):
        document = self.made()
        self.assertEqual(document["spdxVersion"], "SPDX-2.3")
        self.assertEqual(document["dataLicense"], "CC0-1.0")
        self.assertEqual(document["creationInfo"]["created"], "2023-11-14T22:13:20Z")
        entries = document["packages"] + document["files"]
        names = [document["SPDXID"]] + [entry["SPDXID"] for entry in entries]
        self.assertEqual(len(set(names)), len(names))
        for name in names:
            self.assertRegex(name, r"^SPDXRef-[A-Za-z0-9.-]+$")
        for relationship in document["relationships"]:
            self.assertIn(relationship["spdxElementId"], names)
            self.assertIn(relationship["relatedSpdxElement"], names)
        self.assertEqual({relationship["relatedSpdxElement"] for relationship in document["relationships"]}, set(names[1:]))
        codes = sorted(hashlib.sha1(contents).hexdigest() for contents in self.files.values())
        self.assertEqual(document["packages"][0]["packageVerificationCode"]["packageVerificationCodeValue"],
                         hashlib.sha1("".join(codes).encode()).hexdigest())

    def test_names_the_software_of_others(self):
        components = {package["name"]: package["licenseDeclared"] for package in self.made()["packages"][1:]}
        self.assertEqual(components, {"Parser (header-only)": "MIT", "Streams": "BSL-1.0"})

    def test_is_the_same_each_time(self):
        self.assertEqual(self.made(), self.made())

    def test_tells_the_packages_apart(self):
        where = "the tool `tessaport`, the test kit"
        self.assertTrue(spdx.is_in(where, pathlib.Path("tessaport_1.2.3-1_amd64.deb")))
        self.assertTrue(spdx.is_in(where, pathlib.Path("libvelmora-tessaport-testkit-dev_1.2.3-1_amd64.deb")))
        self.assertFalse(spdx.is_in(where, pathlib.Path("libvelmora-tessaport0_1.2.3-1_amd64.deb")))
        self.assertFalse(spdx.is_in(where, pathlib.Path("tessaport-local-service_1.2.3-1_amd64.deb")))

    def test_tells_complete_archives_from_others(self):
        where = "the complete archives, `velmora/dotnet`"
        self.assertTrue(spdx.is_in(where, pathlib.Path("VelmoraTessaport-1.2.3-linux-x86_64-complete.tar.gz")))
        self.assertTrue(spdx.is_in(where, pathlib.Path("VelmoraTessaport-1.2.3-win-x64-complete.zip")))
        self.assertFalse(spdx.is_in(where, pathlib.Path("VelmoraTessaport-1.2.3-linux-x86_64.tar.gz")))
        self.assertFalse(spdx.is_in(where, pathlib.Path("tessaport_1.2.3-1_amd64.deb")))

    def test_refuses_terms_and_places_that_it_does_not_know(self):
        self.notices(NOTICES.replace("| MIT |", "| Some terms |"))
        self.assertIn("the terms 'Some terms' of Parser (header-only)", self.run_tool().stderr)
        self.notices(NOTICES.replace("the tool `tessaport`, the test kit", "somewhere"))
        self.assertIn("no package is known to have 'somewhere'", self.run_tool().stderr)
        self.notices("nothing")
        self.assertIn("has no table", self.run_tool().stderr)

    def test_knows_the_notices_of_this_project(self):
        self.assertGreaterEqual(len(spdx.third_party(ROOT)), 5)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
