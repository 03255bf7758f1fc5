#!/usr/bin/env python3
"""What becomes of files around the program: a standard output that fails, two sessions, signals, names that are not UTF-8,
no folder that can be written.

  fichiers.py PROGRAM SOURCE_TREE"""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

program, source = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
faults = []


def check(good, what, output=b""):
    if not good:
        faults.append(what + ("\n" + output.decode("utf-8", "replace") if output else ""))


def run(*arguments, script=None, stdout=subprocess.PIPE, environment=None, prefix=()):
    if script is not None:
        (folder / "s.scr").write_text(script, encoding="utf-8")
        arguments += ("--script", "s.scr")
    done = subprocess.run([*prefix, program, *arguments], cwd=folder, env=environment or usual, stdin=subprocess.DEVNULL,
                          stdout=stdout, stderr=subprocess.STDOUT if stdout == subprocess.PIPE else subprocess.PIPE,
                          timeout=60)
    return done.returncode, (done.stdout or b"") + (done.stderr or b"")


def session(*arguments):
    return subprocess.Popen([program, *arguments], cwd=folder, env=usual, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT)


def wait_for(path):
    end = time.time() + 20
    while not path.exists() and time.time() < end:
        time.sleep(0.02)
    return path.exists()


def names():
    return sorted(os.listdir(os.fsencode(folder)))


def failing_output():
    run("importer", "--points", "leve.xyz", "--sortie", "plan.dxf")
    for arguments in (("points", "plan.dxf", "--csv"), ("--help",), ("plan.dxf", "--commande", "(princ 1)")):
        with open("/dev/full", "wb") as full:
            status, output = run(*arguments, stdout=full)
        check(status == 1 and "plus de place".encode() in output, f"{arguments} onto a full device: status {status}", output)


def two_sessions():
    first = session("plan.dxf")
    check(wait_for(folder / "plan.dxf.ouvert"), "no note beside an open drawing")
    before = (folder / "plan.dxf").read_bytes()
    for script, arguments in ('LINE\n0,0\n1,1\n\nQSAVE\n', ()), ("(princ 1)\n", ("--sortie", "plan.dxf")):
        status, output = run("plan.dxf", *arguments, script=script)
        check(status == 1 and "un autre nom".encode() in output.lower(), "the second saves over the first", output)
    status, output = run(script="SAVEAS\nplan.dxf\n[Oui]\n")
    check(status == 1 and (folder / "plan.dxf").read_bytes() == before, "another drawing takes the name of an open one", output)
    check((folder / "plan.dxf.ouvert").exists(), "the first session's note is gone")
    status, output = run("plan.dxf", script='LINE\n0,0\n1,1\n\nSAVEAS\nplan2.dxf\n')
    check("déjà ouvert par".encode() in output and b"processus %d" % first.pid in output, "the second is not told", output)
    check(status == 0 and (folder / "plan2.dxf").exists(), "the second may not save beside it", output)
    (folder / "plan.dxf").write_bytes(before + b"\n")  # a program that knows no notes
    output = first.communicate("LINE\n0,0\n9,9\n\nQSAVE\n".encode())[0]
    check(first.returncode == 1 and "par une autre session".encode() in output, "the first replaces it unasked", output)
    check(not (folder / "plan.dxf.ouvert").exists(), "a note is left behind")


def signals():
    for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
        process = session("plan.dxf")
        wait_for(folder / "plan.dxf.ouvert")
        process.send_signal(number)
        process.wait()
        killed = number == signal.SIGKILL
        check((folder / "plan.dxf.ouvert").exists() == killed, f"note after signal {number}")
        check(process.returncode == -number, f"status after signal {number}: {process.returncode}")
    status, output = run("plan.dxf", script="QUIT\n")
    check("n'est plus là".encode() in output and not (folder / "plan.dxf.ouvert").exists(), "abandoned note", output)
    before = (folder / "plan.dxf").read_bytes()
    status, output = run("plan.dxf", "--sortie", "plan.dxf", prefix=("sh", "-c", 'ulimit -f 8; exec "$@"', "sh"))
    check(status == 1 and "taille permise".encode() in output, "a limit on the size of files", output)
    check((folder / "plan.dxf").read_bytes() == before and not any(b".veltora-" in n for n in names()), "litter of a limit")


def unsaved():
    status, output = run(script='LINE\n0,0\n1,1\n\n')
    check(status == 0 and "ne sont pas enregistrées".encode() in output, "a script that ends unsaved", output)
    table = "(c:gererleves)\n[Créer]\n[Fermer]\n"
    status, output = run("plan.dxf", script=table)
    check(b"plan.dxf : des modifications" in output, "a table that no save took", output)
    status, output = run("plan.dxf", script=table + "QSAVE\nQUIT\n")
    check(status == 0 and b"modifications" not in output, "tables that were saved", output)
    for leave in ("QUIT", "CLOSE"):
        status, output = run("plan.dxf", script=table + leave + "\n[Non]\n")
        check(status == 0 and "Enregistrer les modifications de plan.dxf ?".encode() in output, f"{leave} asks", output)


def odd_names():
    name = b"Relev\xe9 St. \xc9tienne"
    shutil.copy(folder / "plan.dxf", os.fsencode(folder) + b"/" + name)
    status, output = run(name, "--sortie", name + b".dxf", script="(princ 1)\n")
    check(status == 0 and name + b".dxf" in names(), "a name that is not UTF-8", output)
    status, output = run("exporter", name + b".dxf", b"\xff.xyz")
    check(status == 0 and b"\xff.xyz" in names(), "an export under such a name", output)
    os.mkfifo(folder / "tube.dxf")
    os.symlink("absent.dxf", folder / "perdu.dxf")
    for path in ("tube.dxf", "/dev/zero", "perdu.dxf"):
        status, output = run("points", path)
        check(status == 1, f"reading {path}", output)
        status, output = run("plan.dxf", "--sortie", path)
        check(status == 1, f"writing {path}", output)


def no_folder():
    rooted = os.path.exists("/defcodif")
    environment = {k: v for k, v in usual.items() if k not in ("HOME", "XDG_DATA_HOME", "VELTORA_INSTALLATION")}
    environment["HOME"] = environment["VELTORA_INSTALLATION"] = "/dev/null/x"
    tree = folder / "arbre"
    (tree / "bin").mkdir(parents=True)
    for name in ("veltora", "veltora.arx", "libarx.so", "libveltora_base.so"):
        shutil.copy(program.parent / name, tree / "bin")
    for data in (True, False):
        if data:
            shutil.copytree(source / "data", tree / "share" / "veltora")
        else:
            shutil.rmtree(tree / "share")
        os.chmod(tree, 0o755)
        arguments = [tree / "bin" / "veltora", "importer", "--points", "leve.xyz", "--sortie", f"sans{data}.dxf"]
        readonly = ["unshare", "-rm", "sh", "-c", 'mount --bind "$0" "$0" && mount -o remount,bind,ro "$0" && exec "$@"', tree]
        done = subprocess.run(readonly + arguments if data else arguments, cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if data and b"unshare" in done.stdout:
            print("no user namespace here: the folder that cannot be written is left out")
            continue
        placed = "21 points placés".encode() in done.stdout
        check(done.returncode == (0 if data else 1) and placed == data, f"no folder to write, data {data}", done.stdout)
        check((folder / f"sans{data}.dxf").exists() == data, f"drawing without blocks, data {data}")
    check(os.path.exists("/defcodif") == rooted, "a code table in the root folder")


def readme():
    """The first session of the README, as it stands: the altitudes of the call before it stay."""
    text = (source / "README.md").read_text(encoding="utf-8")
    call = re.search(r"^build/release/bin/veltora (polygonale .*)$", text, re.M).group(1)
    lines = re.search(r"^\$ build/release/bin/veltora (\S+)\n(.*?)^```", text, re.M | re.S)
    shutil.copytree(source / "examples", folder / "examples")
    status, output = run(*call.split())
    check(status == 0, "the README's call", output)
    before = run("points", lines.group(1), "--csv")[1]
    script = lines.group(2).replace("Commande: ", "")
    status, output = run(lines.group(1), script=script)
    check(status == 0, "the README's session", output)
    after = run("points", lines.group(1), "--csv")[1]
    same = sorted(before.splitlines()) == sorted(after.splitlines())
    check(same and before.count(b"\n") > 5, "the README's session changes the points", before + after)


def main():
    global folder, usual
    for test in (failing_output, two_sessions, signals, unsaved, odd_names, no_folder, readme):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            usual = dict(os.environ, HOME=name, VELTORA_INSTALLATION=name + "/i", TMPDIR=name)
            usual.pop("XDG_STATE_HOME", None)
            shutil.copy(source / "examples/leve.xyz", folder)
            if test is not failing_output:
                run("importer", "--points", "leve.xyz", "--sortie", "plan.dxf")
            test()
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main()
