"""The packages of Debian in a fresh Debian: installed, used, removed, with nothing left of them.

    deb_test.py PACKAGES SOURCE SCRATCH

PACKAGES is a folder of the packages of one version. The fresh Debian is a small one of the release of this machine; it
is set up once below SCRATCH, with what the packages need of others, and each run works in a copy. Status 0: all as it should be; 1: something is not; 77: not
run, with the reason.
"""

import os
import re
import shlex
import shutil
import subprocess
import sys
import time
from pathlib import Path

PACKAGES, SOURCE, SCRATCH = (Path(argument).absolute() for argument in sys.argv[1:])
BASE, TREE = SCRATCH / "debian", SCRATCH / "tree"
TOOLS = {"gcc", "libc6-dev", "pkgconf"}  # to compile a host
LIMIT = 1200  # seconds of any command
# dpkg and the loader write these anew at each change of any package.
OF_THE_SYSTEM = re.compile(r"var/(lib/dpkg/(\w+-old|available|triggers/\w+)|log/.*|cache/ldconfig/aux-cache)")
FAULTS = []


def unable(reason):
    print(f"deb: not run: {reason}", file=sys.stderr)
    sys.exit(77)


def expect(what, wanted, found):
    if wanted != found:
        FAULTS.append(what)
        print(f"FAILED {what}\n    wanted {wanted!r:.400}\n    found  {found!r:.400}")


def shell(command, folder="/", tree=TREE):
    """A command in the copy, with a /proc of its own processes."""
    return subprocess.run(
        ["unshare", "--mount", "--pid", "--fork", "--kill-child", f"--mount-proc={tree}/proc", "chroot", str(tree),
         "/usr/bin/env", "-i", "-C", folder, "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C.UTF-8",
         "DEBIAN_FRONTEND=noninteractive", "PYTHONDONTWRITEBYTECODE=1", "sh", "-c", command],
        stdin=subprocess.DEVNULL, capture_output=True, timeout=LIMIT, check=False,
    )  # fmt: skip


def fine(what, command, folder="/"):
    done = shell(command, folder)
    if done.returncode != 0:
        print(done.stderr.decode("utf-8", "replace")[-2000:])
    expect(what, 0, done.returncode)
    return done.stdout


def set_up():
    release = dict(re.findall(r'^(\w+)="?([^"\n]*)', Path("/etc/os-release").read_text(encoding="utf-8"), re.M))
    suite = release.get("VERSION_CODENAME")
    if release.get("ID") != "debian" or not suite:
        unable("/etc/os-release names no Debian")
    if os.getuid() != 0:
        unable("only root may set up a Debian")
    if shutil.which("debootstrap", path=os.environ["PATH"] + ":/usr/sbin") is None:
        unable("there is no debootstrap")
    allowed = subprocess.run(["unshare", "--mount", "--pid", "--fork", "--mount-proc", "chroot", "/", "true"],
                             capture_output=True, check=False)  # fmt: skip
    if allowed.returncode != 0:
        unable("this process may not mount or change its root")
    mark = BASE / "whole"
    if not mark.exists() or mark.read_text(encoding="utf-8") != suite:
        bootstrap(suite)
    missing = needed() - set(shell("dpkg-query -W -f '${Package}\\n'", tree=BASE).stdout.decode().split())
    if missing:
        shutil.copy("/etc/resolv.conf", BASE / "etc/resolv.conf")
        install = "apt-get install -y -q --no-install-recommends " + " ".join(sorted(missing))
        done = shell(f"apt-get update -q && {install} && apt-get clean", tree=BASE)
        if done.returncode != 0:
            unable(f"{', '.join(sorted(missing))} can't be installed in {BASE}: {done.stderr.decode()[-300:]}")


def needed():
    """The tools of the test, and what the packages need of others."""
    names = set(TOOLS)
    for package in PACKAGES.glob("*.deb"):
        depends = subprocess.run(["dpkg-deb", "-f", package, "Depends"], capture_output=True, text=True, check=True).stdout
        names |= {word.split()[0] for word in depends.split(",") if word.strip() and "tarvane" not in word}
    return names


def bootstrap(suite):
    mirrors = subprocess.run(["apt-get", "indextargets", "--format", "$(REPO_URI)", "Created-By: Packages"],
                             capture_output=True, text=True, check=False).stdout.split()  # fmt: skip
    if not mirrors:
        unable("apt-get knows no package registry")
    print(f"deb: setting up Debian {suite} in {BASE}", file=sys.stderr, flush=True)
    new = BASE.with_name("new")
    shutil.rmtree(BASE, ignore_errors=True)
    shutil.rmtree(new, ignore_errors=True)
    with open(SCRATCH / "debootstrap.log", "wb") as log:
        done = subprocess.run(
            ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "debootstrap", "--variant=minbase",
             suite, str(new), mirrors[0]],
            stdout=log, stderr=log, env={**os.environ, "PATH": os.environ["PATH"] + ":/usr/sbin:/sbin"}, check=False,
        )  # fmt: skip
    if done.returncode != 0:
        unable(f"no Debian could be set up from {mirrors[0]}; the log is {SCRATCH}/debootstrap.log")
    for package in (new / "var/cache/apt/archives").glob("*.deb"):
        package.unlink()
    (new / "whole").write_text(suite, encoding="utf-8")
    new.rename(BASE)


def everything():
    """Each file of the system that is no other's."""
    listed = fine("the list of files", "find . -xdev -path ./proc -prune -o -path ./stage -prune -o -printf '%P\\n'")
    return {name for name in listed.decode().splitlines() if not OF_THE_SYSTEM.fullmatch(name)}


def use():
    """What the packages without that for development are for."""
    for each in ("tests/golden", "examples/hosts", "include/tarvane"):
        expect(f"{each} is there", True, (SOURCE / each).is_dir())
    goldens = sorted((SOURCE / "tests/golden").glob("*.toml"))
    for path in goldens:
        shutil.copy(path, TREE / "stage")
    fine("golden inputs", 'for f in *.toml; do tarvane run "$f" --report "${f%.toml}.txt" >/dev/null 2>"$f.err"; '
         '[ $? -le 3 ] || exit 1; done', "/stage")  # fmt: skip
    for path in goldens:
        report = TREE / "stage" / path.with_suffix(".txt").name
        found = report.read_bytes() if report.exists() else b"(none)"
        expect(f"golden report {report.name}", path.with_suffix(".txt").read_bytes(), found)
    recorded = (SOURCE / "tests/clients/three_elements.txt").read_bytes()
    shutil.copy(SOURCE / "examples/hosts/three_elements.py", TREE / "stage")
    lines = fine("the Python package", "python3 three_elements.py", "/stage").splitlines()
    numbers = {line for line in lines if re.fullmatch(rb"\w+ \w+ [0-9A-F]{8}", line)}
    expect("numbers of the Python package", True, len(numbers) > 8 and numbers <= set(recorded.splitlines()))
    expect("the man page", b".TH TARVANE 1", fine("the man page", "zcat /usr/share/man/man1/tarvane.1.gz")[:13])
    return len(goldens), recorded


def develop(recorded):
    shutil.copy(SOURCE / "examples/hosts/three_elements.c", TREE / "stage")
    fine("a host in C", "gcc three_elements.c $(pkg-config --cflags --libs tarvane) -o host", "/stage")
    folder = "$(pkg-config --variable=datadir tarvane)"
    expect("the output of a host in C", recorded, fine("a host in C", f"./host {folder}", "/stage"))


def main():
    began = time.monotonic()
    SCRATCH.mkdir(parents=True, exist_ok=True)
    set_up()
    ready = time.monotonic()
    if TREE.exists():
        shutil.rmtree(TREE)
    subprocess.run(["cp", "-a", "--reflink=auto", str(BASE), str(TREE)], check=True)
    (TREE / "stage").mkdir()
    packages = sorted(PACKAGES.glob("*.deb"))
    for package in packages:
        shutil.copy(package, TREE / "stage")
    names = [package.name.split("_")[0] for package in packages]
    expect("seven packages", 7, len(set(names)))

    before = everything()
    development = [name for name in names if name.endswith("-dev")]
    runtime = " ".join(shlex.quote(package.name) for package in packages if "-dev_" not in package.name)
    fine("installation", f"dpkg -i {runtime}", "/stage")
    expect("nothing is half installed", b"", fine("audit", "dpkg --audit"))
    goldens, recorded = use()
    fine("installation of the package for development", "dpkg -i libtarvane-dev_*.deb", "/stage")
    develop(recorded)
    installed = " ".join(names)
    expect("all files are as they were packed", b"", fine("verification", f"dpkg --verify {installed}"))
    more = everything() - before
    expect("there is something to remove", True, len(more) > 80)

    # A library does not go while something needs it.
    expect("a library that is needed stays", False, shell("dpkg --purge libtarvane1").returncode == 0)
    fine("removal", f"dpkg --purge {installed}")
    after = everything()
    expect("left behind", [], sorted(after - before))
    expect("taken away with it", [], sorted(before - after))
    expect("packages that are still known", b"", shell("dpkg-query -W '*tarvane*'").stdout)
    shutil.rmtree(TREE)
    print(f"deb: {len(names)} packages ({len(development)} for development), {goldens} golden reports; "
          f"{len(FAULTS)} faults; {ready - began:.0f} s to set up, {time.monotonic() - ready:.0f} s to test")  # fmt: skip
    return 1 if FAULTS else 0


sys.exit(main())
