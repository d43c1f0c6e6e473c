"""Makes the wheel: package, library and data files in one folder. Standard library only, so that pip needs no other
package and no network.

The library comes from a build tree. One that is named, by TARVANE_BUILD or by --config-settings=build=FOLDER, is taken
as it is; without a name CMake brings build/release, or build/wheel where that is not configured, up to date first.
"""

import base64
import ctypes
import hashlib
import os
import re
import shutil
import subprocess
import sys
import sysconfig
import time
import zipfile
from pathlib import Path

SOURCE = Path(__file__).absolute().parents[2]
LIBRARIES = ("tarvane_vessel.dll", "tarvane.dll") if sys.platform == "win32" else (
    "libtarvane_vessel.so", "libtarvane.so")  # fmt: skip
TARGETS = ("tarvane_vessel", "tarvane", "tarvane_data", "tarvane_built_data")
WITHOUT = [f"-DTARVANE_{part}=OFF" for part in ("APP", "TESTS", "BENCH", "INSTALL")]


class UnsupportedOperation(Exception):
    """What pip and its kin look for when a backend can't do something."""


def version():
    return re.search(r"project\(tarvane VERSION ([0-9.]+)", (SOURCE / "CMakeLists.txt").read_text("utf-8"))[1]


def build_tree(settings):
    named = (settings or {}).get("build") or os.environ.get("TARVANE_BUILD")
    if named:
        return Path(named).absolute()
    tree = SOURCE / "build" / "release"
    if shutil.which("cmake") is None:
        raise SystemExit("tarvane: the library is built by cmake, which is not found: install it, or name a built tree "
                         "by the variable TARVANE_BUILD")  # fmt: skip
    if not (tree / "CMakeCache.txt").exists():
        tree = SOURCE / "build" / "wheel"
        subprocess.run(["cmake", "-S", SOURCE, "-B", tree, "-DCMAKE_BUILD_TYPE=Release", *WITHOUT], check=True)
    jobs = str(os.cpu_count() or 1)  # without a number make starts all at once
    subprocess.run(["cmake", "--build", tree, "--config", "Release", "--parallel", jobs, "--target", *TARGETS],
                   check=True)  # fmt: skip
    return tree


def built_files(tree):
    """Libraries and data files by name in the package."""
    found = {name: tree / "bin" / name for name in LIBRARIES}
    data = [file for file in (tree / "bin").glob("*") if file.suffix.lower() in (".txt", ".bin")]
    found.update({f"data/{file.name}": file for file in data})
    missing = [name for name in (*LIBRARIES, "data/data_version.txt", "data/MATFILE1.BIN")
               if not found.get(name, tree / name).is_file()]  # fmt: skip
    if missing:
        raise SystemExit(f"tarvane: {tree} has no {missing[0].replace('data/', '')} in its folder bin: run\n"
                         f"    cmake --build {tree} --target {' '.join(TARGETS)}")  # fmt: skip
    library = ctypes.CDLL(str(found[LIBRARIES[0]]))  # of another machine, it is not loaded
    library.tarvane_version.restype = ctypes.c_char_p
    if library.tarvane_version().decode() != version():
        raise SystemExit(f"tarvane: the library in {tree} is of version {library.tarvane_version().decode()}, the "
                         f"sources are of {version()}: build it again")  # fmt: skip
    return found


def platform():
    """Of this interpreter; one of 32 bits may run on a kernel of 64."""
    name = sysconfig.get_platform()
    return "linux-i686" if name == "linux-x86_64" and sys.maxsize < 2**32 else name


def metadata():
    head = (f"Metadata-Version: 2.1\nName: tarvane\nVersion: {version()}\n"
            "Summary: Pressure vessel calculations: flanges, shells, external pressure, metal temperatures\n"
            "License: MIT\nRequires-Python: >=3.9\nProvides-Extra: frames\nRequires-Dist: pandas; extra == 'frames'\n"
            "Description-Content-Type: text/markdown\n\n")  # fmt: skip
    return head + (SOURCE / "python" / "README.md").read_text("utf-8")


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    built = built_files(build_tree(config_settings))
    package = SOURCE / "python" / "tarvane"
    files = {f"tarvane/{file.relative_to(package).as_posix()}": file.read_bytes()
             for file in [*package.rglob("*.py"), package / "py.typed"]}  # fmt: skip
    files.update({f"tarvane/{name}": file.read_bytes() for name, file in built.items()})
    tag = f"py3-none-{re.sub('[-.]', '_', platform())}"
    info = f"tarvane-{version()}.dist-info"
    files[f"{info}/LICENSE"] = (SOURCE / "LICENSE").read_bytes()
    files[f"{info}/LICENSE.font"] = (SOURCE / "vessel" / "drawing" / "font" / "LICENSE").read_bytes()
    files[f"{info}/METADATA"] = metadata().encode("utf-8")
    files[f"{info}/WHEEL"] = f"Wheel-Version: 1.0\nGenerator: tarvane\nRoot-Is-Purelib: false\nTag: {tag}\n".encode()
    digests = {name: base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
               for name, data in files.items()}  # fmt: skip
    record = [f"{name},sha256={digests[name]},{len(files[name])}\n" for name in sorted(files)]
    name = f"tarvane-{version()}-{tag}.whl"
    # The same inputs give the same bytes: sorted, of one date, without the rights of this machine.
    date = max(time.gmtime(int(os.environ.get("SOURCE_DATE_EPOCH", "0")))[:6], (1980, 1, 1, 0, 0, 0))
    with zipfile.ZipFile(Path(wheel_directory, name), "w") as wheel:
        for member in [*sorted(files), f"{info}/RECORD"]:
            entry = zipfile.ZipInfo(member, date)
            entry.compress_type, entry.create_system = zipfile.ZIP_DEFLATED, 3
            entry.external_attr = (0o100755 if member.endswith((".so", ".dll")) else 0o100644) << 16
            wheel.writestr(entry, files.get(member, "".join([*record, f"{info}/RECORD,,\n"])))
    return name


def build_sdist(sdist_directory, config_settings=None):
    raise UnsupportedOperation("tarvane has no source distribution for pip: take its source tree")
