#!/usr/bin/env python3
"""Makes faults in the sources, one at a time, and lists those that no test notices.

mutate.py <root of the repository> [--count NUMBER] [--seed SEED] [FOLDER...]

The sources must be as they are committed; each is restored after its fault. The tests run where only the build folder and an
empty /tmp can be written, because a fault may delete files. Faults that explained_mutations.txt lists are not made. The exit code
is 1 if fewer than 95 % are noticed.
"""
import argparse
import collections
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # A new folder would be a change of the tree.
import mutations  # noqa: E402

BUILD = "build/release"
SECONDS = 300  # For the tests of one fault; one that lets them hang is noticed.
GIB = 1 << 30
LEAST_NOTICED = 0.95

Area = collections.namedtuple("Area", "suffix targets tests")


def programs(*names):
    return [[f"{BUILD}/tests/{name}"] for name in names]


def native(*names):
    return Area(".cpp", list(names), programs(*names))


BRIDGE = ("bridge_tests", "damaged_reply_tests", "failing_allocation_tests", "unscripted_service_tests", "native_tests")
# Those that start hundreds of processes take minutes, and so do kills and failing calls.
STARTS = [[f"{BUILD}/tests/runtime_tests", "--gtest_filter=-HostThreads*:ProcessEnd*:QueueEnd*:RunningRuntime*:ManagedHost*"]]
SERVICE = [[f"{BUILD}/managed/tests/local-service/LocalTessaport.Tests", "-stopOnFail", "-method-", "*KillTests*", "-class-",
            "*FailingCallTests"]]

# The folders in which faults are made, and the tests that cover them.
AREAS = {
    "velmora/text": Area(".h", ["unicode_tests", "text_tests"], programs("unicode_tests", "text_tests")),
    "velmora/platform": native("platform_tests", "native_tests"),
    "velmora/api": native("api_tests", "bridge_tests"),
    "velmora/io": native("io_tests", "failing_io_tests", "endless_checksum_tests"),
    "velmora/logging": native("logging_tests", "failing_logging_tests"),
    "velmora/bridge/boundary": native(*BRIDGE),
    "velmora/bridge/conversions": native(*BRIDGE),
    "velmora/bridge/runtime": Area(".cpp", ["runtime_tests"], STARTS),
    "velmora/native": native("message_formatting_tests", "rich_text_markup_tests", "probe_file_tests", "urn_id_names_tests",
                             "diagnostic_log_tests", "request_queue_tests", "native_tests"),
    "velmora/testkit": native("testkit_tests", "testkit_repeated_start_tests", "testkit_refused_start_tests"),
    "tools/tessaport": native("cli_tests"),
    "managed/Velmora.Bridge": Area(".cs", ["velmora_bridge", *BRIDGE, "runtime_tests"], [*programs(*BRIDGE), *STARTS]),
    "managed/LocalTessaport": Area(".cs", ["velmora_local_service_tests"], SERVICE),
}

# Makes everything read-only but the build and an empty /tmp, for the program that follows.
ENCLOSED = """
mount --bind "$1" "$1" && mount --bind "$2" /tmp && mount -o remount,bind,ro / || exit 99
shift 2
exec "$@"
"""


def is_clean():
    return not subprocess.run(["git", "status", "--porcelain"], check=True, capture_output=True).stdout


def builds(area):
    command = ["cmake", "--build", BUILD, "--target", *area.targets]
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode == 0


def limit_resources():
    resource.setrlimit(resource.RLIMIT_DATA, (4 * GIB, 4 * GIB))
    resource.setrlimit(resource.RLIMIT_FSIZE, (GIB, GIB))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def environment():
    library = str(pathlib.Path(BUILD).resolve() / "lib" / "libvelmora_recorded_calls.so")
    return {**os.environ, "GTEST_FAIL_FAST": "1", "TMPDIR": "/tmp", "VELMORA_RECORDED_CALLS_LIBRARY": library}


def passes(test, seconds=SECONDS):
    """Whether a test program, enclosed, passes in time."""
    with tempfile.TemporaryDirectory() as scratch:
        os.chmod(scratch, 0o1777)  # Some tests are another user.
        command = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "sh", "-c", ENCLOSED, "sh",
                   str(pathlib.Path(BUILD).resolve()), scratch, *test]
        try:
            result = subprocess.run(command, timeout=seconds, preexec_fn=limit_resources, check=False, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment())
        except subprocess.TimeoutExpired:
            return False
    if result.returncode == 99:
        sys.exit("mutate.py: the tests cannot be enclosed; run it as root")
    return result.returncode == 0


def fate(mutation, area):
    """What becomes of a fault: "noticed", "survived" or "not compiled"."""
    path = pathlib.Path(mutation.file)
    original = path.read_text(encoding="utf-8")
    lines = original.split("\n")
    lines[mutation.line - 1] = mutation.after
    try:
        path.write_text("\n".join(lines), encoding="utf-8")
        if not builds(area):
            return "not compiled"
        return "survived" if all(passes(test) for test in area.tests) else "noticed"
    finally:
        path.write_text(original, encoding="utf-8")


def require_passing(area):
    """Faults in what fails anyway would all count as noticed."""
    if not builds(area):
        sys.exit("mutate.py: the sources do not build as they are")
    for test in area.tests:
        if not passes(test, 2 * SECONDS):
            sys.exit(f"mutate.py: {' '.join(test)} fails without a fault")


def run(folders, count, seed):
    fates = collections.Counter()
    explained = mutations.explained("tools/dev/explained_mutations.txt")
    for folder in folders:
        area = AREAS[folder]
        require_passing(area)
        for mutation in mutations.chosen(".", folder, area.suffix, count, seed):
            result = "explained" if mutation.key in explained else fate(mutation, area)
            fates[result] += 1
            print(f"{result}: {mutation}", flush=True)
        builds(area)
    tried = fates["noticed"] + fates["survived"]
    print(f"{tried} faults, {fates['noticed']} noticed, {fates['survived']} survived; {fates['explained']} that no test can "
          f"notice and {fates['not compiled']} that do not compile were left out")
    return fates["noticed"] >= LEAST_NOTICED * tried


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root")
    parser.add_argument("--count", type=int, default=8, help="for each folder")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("folders", nargs="*", metavar="FOLDER")
    arguments = parser.parse_intermixed_args()
    os.chdir(arguments.root)
    unknown = [folder for folder in arguments.folders if folder not in AREAS]
    if unknown:
        sys.exit(f"mutate.py: no tests are known for {unknown[0]}; there are: {' '.join(AREAS)}")
    if not is_clean():
        sys.exit("mutate.py: commit the changes of the tree first; faults are made in its files")
    sys.exit(0 if run(arguments.folders or AREAS, arguments.count, arguments.seed) else 1)


if __name__ == "__main__":
    main()
