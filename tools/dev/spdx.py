#!/usr/bin/env python3
"""Writes an SPDX 2.3 document beside each Debian package and archive: every file in it with its checksums, and the software of
others that is in it, from THIRD-PARTY-NOTICES.md.

spdx.py <root of the repository> <version> <package or archive>...

The documents are dated by SOURCE_DATE_EPOCH.
"""
import datetime
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile

# The terms in the table of the notices, as SPDX names them.
LICENSES = {"MIT": "MIT", "BSD 3-Clause": "BSD-3-Clause", "Boost Software License 1.0": "BSL-1.0"}
# What the table of the notices calls a place, and the Debian package that has it. An archive has all, but for what only
# complete ones have.
PLACES = {
    r"`VelmoraTessaport`": r"libvelmora-tessaport\d+",
    r"`VelmoraLogging`": r"libvelmora-tessaport-dev",
    r"`tessaport`": r"tessaport",
    r"test kit": r"libvelmora-tessaport-testkit-dev",
    r"site of the documents": r"velmora-tessaport-doc",
    r"complete archives": None,
}


def unpack(package, folder):
    if package.suffix == ".deb":
        subprocess.run(["dpkg-deb", "--extract", package, folder], check=True)
    elif package.suffix == ".zip":
        subprocess.run(["cmake", "-E", "tar", "xf", package.resolve()], cwd=folder, check=True)
    else:
        with tarfile.open(package) as archive:
            archive.extractall(folder)


def name_of(package):
    if package.suffix == ".deb":
        return package.name.split("_")[0]
    return re.sub(r"\.(tar\.gz|zip)$", "", package.name)


def third_party(root):
    """Rows of the table: software, where it is, license."""
    table = re.findall(r"^\| ([^|]+) \| ([^|]+) \| ([^|]+) \|$", (root / "THIRD-PARTY-NOTICES.md").read_text(), re.MULTILINE)
    rows = [row for row in table if row[0] != "software" and not row[0].startswith("---")]
    if not rows:
        sys.exit("spdx.py: THIRD-PARTY-NOTICES.md has no table of what is distributed.")
    for software, where, terms in rows:
        if terms not in LICENSES:
            sys.exit(f"spdx.py: the terms '{terms}' of {software} have no SPDX identifier here; add it to LICENSES.")
        if not any(re.search(place, where) for place in PLACES):
            sys.exit(f"spdx.py: no package is known to have '{where}'; add it to PLACES.")
    return rows


def is_in(where, package):
    if package.suffix != ".deb":
        return "complete archives" not in where or name_of(package).endswith("-complete")
    return any(name and re.search(place, where) and re.fullmatch(name, name_of(package)) for place, name in PLACES.items())


def checksums(contents):
    return [{"algorithm": name, "checksumValue": hashlib.new(name, contents).hexdigest()} for name in ("SHA1", "SHA256")]


def file_entries(folder):
    paths = sorted(path for path in folder.rglob("*") if path.is_file() and not path.is_symlink())
    return [{
        "SPDXID": f"SPDXRef-File-{number}",
        "fileName": f"./{path.relative_to(folder).as_posix()}",
        "checksums": checksums(path.read_bytes()),
        "licenseConcluded": "NOASSERTION",
        "licenseInfoInFiles": ["NOASSERTION"],
        "copyrightText": "NOASSERTION",
    } for number, path in enumerate(paths, 1)]


def verification_code(files):
    """As SPDX defines it: of the SHA1 checksums of all files, in their order."""
    values = sorted(file["checksums"][0]["checksumValue"] for file in files)
    return hashlib.sha1("".join(values).encode()).hexdigest()


def component_entry(number, software, terms):
    return {
        "SPDXID": f"SPDXRef-Component-{number}",
        "name": software,
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": LICENSES[terms],
        "licenseDeclared": LICENSES[terms],
        "copyrightText": "NOASSERTION",
    }


def relationship(subject, kind, target):
    return {"spdxElementId": subject, "relationshipType": kind, "relatedSpdxElement": target}


def document(root, version, package):
    with tempfile.TemporaryDirectory() as folder:
        unpack(package, folder)
        files = file_entries(pathlib.Path(folder))
    contents = package.read_bytes()
    components = [component_entry(number, software, terms)
                  for number, (software, where, terms) in enumerate(third_party(root), 1) if is_in(where, package)]
    created = datetime.datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), datetime.timezone.utc)
    digest = hashlib.sha256(contents).hexdigest()
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": package.name,
        "documentNamespace": f"https://velmora.example/spdx/{package.name}-{digest}",
        "creationInfo": {
            "created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Organization: Velmora developers", f"Tool: velmora-spdx-{version}"],
        },
        "packages": [{
            "SPDXID": "SPDXRef-Package",
            "name": name_of(package),
            "versionInfo": version,
            "packageFileName": package.name,
            "supplier": "Organization: Velmora developers",
            "downloadLocation": "NOASSERTION",
            "filesAnalyzed": True,
            "packageVerificationCode": {"packageVerificationCodeValue": verification_code(files)},
            "checksums": checksums(contents),
            "licenseConcluded": "NOASSERTION",
            "licenseInfoFromFiles": ["NOASSERTION"],
            "licenseDeclared": "Apache-2.0",
            "copyrightText": "Copyright (c) 2025-2026 the authors of Velmora Tessaport",
        }] + components,
        "files": files,
        "relationships": [relationship("SPDXRef-DOCUMENT", "DESCRIBES", "SPDXRef-Package")] + [
            relationship("SPDXRef-Package", "CONTAINS", entry["SPDXID"]) for entry in files + components],
    }


def main():
    root, version = pathlib.Path(sys.argv[1]), sys.argv[2]
    for package in map(pathlib.Path, sys.argv[3:]):
        text = json.dumps(document(root, version, package), indent=1, ensure_ascii=False)
        package.with_name(package.name + ".spdx.json").write_text(text + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
