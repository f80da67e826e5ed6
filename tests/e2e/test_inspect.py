# SPDX-License-Identifier: MIT
"""cradle-inspect-config on whole hosts; inspect_cases.py tells what a case is."""

import json
import os
import re
from pathlib import Path

import pytest

from host import Host
from inspect_cases import InspectCase, all_cases, inspector, name_of


@pytest.mark.parametrize("case", all_cases(), ids=name_of)
def test_the_session_is_the_golden_one(host: Host, case: InspectCase) -> None:
    case.furnish(host)
    assert case.run(host) == case.session()


# Only root can give a file away, and root may read every directory: tests below show these.
IN_NO_SESSION = {"foreign-owner", "unreadable-directory"}


def test_every_kind_of_finding_is_in_some_session(host: Host) -> None:
    result = host.run("findings", "--format", "json", program=inspector())
    kinds = {row["kind"]: row["severity"] for row in json.loads(result.stdout)["kinds"]}
    line = re.compile(r"(error|warning|note): .* \[([a-z-]+)\]$", re.M)
    shown = {
        (kind, severity)
        for case in all_cases()
        for severity, kind in line.findall(case.session())
    }
    assert len(kinds) > 30
    assert {kind for kind, severity in kinds.items() if (kind, severity) not in shown} == IN_NO_SESSION


def test_a_looked_at_host_stays_as_it_is(host: Host) -> None:
    host.conf(
        "[Config]\nAppIdManglingType=None\nKey=${system:touch /ran}\n"
        "[Features]\nCrashLoggerEnabled=true\n"
    )
    host.script("/c/mount-hooks/a.sh", "touch /ran\n")
    host.directory("/tmp/cradle")
    host.file("/out", "")
    fixed = ("--user-id", "1000", "--config", "/c")
    for command in ("files", "show", "check", "graph", "keys"):
        assert host.run(*fixed, command, program=inspector()).status in (0, 1)
    for key in ("Config/Key", "Features/CrashLoggerEnabled"):
        assert host.run(*fixed, "explain", key, program=inspector()).status == 0
    for kind in ("config", "lxc", "property"):
        assert host.run(*fixed, "-t", kind, "diff", "/out", program=inspector()).status == 1
    assert not host.exists("/ran") and not host.exists("/tmp/cradle/crashlogs")
    assert host.read("/out") == ""


def test_pipes_are_not_waited_for(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n")
    fixed = ("--user-id", "1000", "--config", "/c")
    for path in ("/c/20-pipe.conf", "/c/static/a.lxc", "/pipe"):
        host.directory(str(Path(path).parent))
        os.mkfifo(host.path(path))
    for kind in ("config", "lxc", "property"):
        for words in (("check",), ("files",), ("show",), ("diff", "/c/10-base.conf")):
            result = host.run(*fixed, "-t", kind, *words, program=inspector(), timeout=20)
            assert "/c/20-pipe.conf" in result.stdout + result.stderr and result.status in (1, 2)
    result = host.run(*fixed, "diff", "/pipe", program=inspector(), timeout=20)
    assert result.status == 2 and "/pipe: it is a named pipe" in result.stderr


def test_commands_are_started_when_they_shall_be(host: Host) -> None:
    host.conf("[Config]\nKey=${system:echo of $((20 + 1))}\n")
    fixed = ("--user-id", "1000", "--config", "/c", "--run")
    result = host.run(*fixed, "show", "Config/Key", program=inspector())
    assert result == (0, "[Config]\n/c/10-base.conf:2  Key=of 21\n", "")


def test_a_facts_command_of_a_generated_configuration_is_not_started(host: Host) -> None:
    host.conf("[GeneratedConfig]\nUserId=${system:touch /ran}\nUser=u\nHome=/u\nBaseUid=0\n")
    fixed = ("--user-id", "1000", "--config", "/c", "--type", "lxc")
    assert host.run(*fixed, "show", program=inspector()).status == 0
    assert not host.exists("/ran")
    assert host.run(*fixed, "--run", "show", program=inspector()).status == 0
    assert host.exists("/ran")


def test_nobody_is_waited_for(host: Host) -> None:
    host.conf("[Config]\nDataRoot=/home/${USER}\n")
    result = host.run("--config", "/c", "show", program=inspector(), timeout=20)
    assert result == (0, "[Config]\n/c/10-base.conf:2  DataRoot=/home/${USER}\n", "")


def test_the_user_of_the_seat_is_known(host: Host) -> None:
    host.conf("[Config]\nDataRoot=/home/${USER}\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000")
    result = host.run("--config", "/c", "show", program=inspector())
    assert result == (0, "[Config]\n/c/10-base.conf:2  DataRoot=/home/alice\n", "")


def test_other_owners_and_their_groups_are_doubtful(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n")
    host.path("/c").chmod(0o775)
    check = ("--user-id", "1000", "-c", "/c", "check")
    if os.geteuid() != 0:  # only root can give a directory away
        assert host.run(*check, program=inspector()).stdout == "0 errors, 0 warnings, 0 notes\n"
        return
    os.chown(host.path("/c"), 1000, 1000)
    warnings = (
        "/c: warning: Others may change it (mode 0775), and with it what root runs."
        " [others-may-write]\n    chmod go-w.\n"
        "/c: warning: It belongs to alice, who can change what root runs. [foreign-owner]\n"
        "    chown root.\n0 errors, 2 warnings, 0 notes\n"
    )
    assert host.run(*check, program=inspector()) == (0, warnings, "")
    itself = ("--reuid=1000", "--clear-groups", inspector(), *check)
    result = host.run(*itself, program="/usr/bin/setpriv")
    assert result.stdout.endswith("0 errors, 1 warning, 0 notes\n")
    os.chown(host.path("/c"), 4242, 0)
    assert "It belongs to 4242," in host.run(*check, program=inspector()).stdout


def test_nothing_is_looked_for_in_a_directory_that_is_not_there(host: Host) -> None:
    host.directory("/mount-hooks")
    host.path("/mount-hooks").chmod(0o777)
    result = host.run("--user-id", "1000", "-c", "/nowhere", "check", program=inspector())
    assert "[missing-directory]" in result.stdout
    assert "/mount-hooks" not in result.stdout


def test_a_directory_that_cannot_be_read_is_told(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n")
    host.script("/c/mount-hooks/a.sh", "")
    host.path("/c/mount-hooks").chmod(0o711)
    check = ("--user-id", "1000", "-c", "/c", "check")
    assert host.run(*check, program=inspector()).stdout == "0 errors, 0 warnings, 0 notes\n"
    if os.geteuid() == 0:  # only root can become somebody else
        itself = ("--reuid=1000", "--clear-groups", inspector(), *check)
        result = host.run(*itself, program="/usr/bin/setpriv")
        assert result.stdout.splitlines()[0] == (
            "/c/mount-hooks: warning: This directory cannot be read: Permission denied."
            " Not all that is in it is seen. [unreadable-directory]"
        )


def test_a_directory_would_be_made_for_users_who_are_there(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n[Features]\nCrashLoggerEnabled=true\n")
    host.directory("/tmp/cradle")
    host.file("/out", "")
    for base_uid, is_made in (("0", True), ("1", False), ("1000", True)):
        words = ("-u1000", "-c/c", "-tlxc", f"-b{base_uid}", "diff", "/out")
        result = host.run(*words, program=inspector())
        assert ("/tmp/cradle/crashlogs" in result.stdout) == is_made, result


def test_the_reference_of_keys_has_every_group(host: Host) -> None:
    status, text, errors = host.run("keys", program=inspector())
    assert (status, errors) == (0, "")
    groups = re.findall(r"^\[(\w+)\]$", text, re.M)
    keys = json.loads(host.run("keys", "-fjson", program=inspector()).stdout)["keys"]
    assert groups == list(dict.fromkeys(key["group"] for key in keys)) and len(groups) > 5
    assert all(f"  {key['key']} " in text for key in keys)


def test_names_in_a_graph_are_quoted(host: Host) -> None:
    host.conf("[A]\nK=${config:A/L}\n", '/c/a"\tb.conf')
    result = host.run("-u1000", "-c/c", "graph", program=inspector())
    assert 'label="/c/a\\"\\\\tb.conf"' in result.stdout
    picture = host.run("-u1000", "-c/c", "graph", "-fsvg", program=inspector())
    assert picture.status == 0 and "b.conf" in picture.stdout


def test_a_reader_that_goes_away_is_no_trouble_worth_a_word(host: Host) -> None:
    host.conf("[A]\n" + "".join(f"K{i}=1\n" for i in range(50_000)))
    program = f"{inspector()} --user-id 1000 --config /c show"
    script = f"{{ {program}; echo $? >/status; }} | head -n 1"
    assert host.run("-c", script, program="/bin/sh") == (0, "[A]\n", "")
    assert host.read("/status") == "0\n"


def test_findings_are_findings_though_nobody_reads_them(host: Host) -> None:
    host.conf("[Display]\nDensty=1\n")
    program = f"{inspector()} --user-id 1000 --config /c --strict check"
    script = f"{{ sleep 0.3; {program}; echo $? >/status; }} | true"
    assert host.run("-c", script, program="/bin/sh") == (0, "", "")
    assert host.read("/status") == "1\n"


def test_what_is_wrong_comes_before_what_is_shown(host: Host) -> None:
    host.conf("[A]\nKey=1\nbad\n")
    result = host.run("-u1000", "-c/c", "show", program=inspector(), redirect="2>&1")
    first, *rest = result.stdout.splitlines()
    assert first.startswith("/c/10-base.conf:3: error: ") and "[A]" in rest


def test_a_missing_standard_input_is_an_empty_one(host: Host) -> None:
    host.conf("[A]\nKey=${system:cat 2>/dev/null || echo closed}:\n")
    words = ("-u1000", "-c/c", "--run", "explain", "A/Key")
    result = host.run(*words, program=inspector(), redirect="<&-", memcheck=False)
    assert "A/Key = :\n" in result.stdout


def test_an_output_that_fills_up_is_trouble(host: Host) -> None:
    host.conf("[A]\nK=1\n")
    result = host.run("-u1000", "-c/c", "show", program=inspector(), redirect=">/dev/full")
    assert result == (2, "", "cradle-inspect-config: cannot write: No space left on device\n")


@pytest.mark.parametrize(
    "words, complaint",
    [
        ([], "which command?"),
        (["nope"], "nope: unknown command"),
        (["--nope"], "--nope: unknown option"),
        (["show", "a", "b"], "show takes [GROUP[/KEY]]"),
        (["check", "a"], "check takes no operand"),
        (["explain"], "explain takes GROUP/KEY"),
        (["show", "--format=svg"], "--format svg is for graph"),
    ],
)
def test_a_wrong_command_line_is_refused(host: Host, words: list[str], complaint: str) -> None:
    hint = "Try 'cradle-inspect-config --help'.\n"
    expected = (2, "", f"cradle-inspect-config: {complaint}\n{hint}")
    assert host.run(*words, program=inspector()) == expected


def test_help_and_version_are_told(host: Host) -> None:
    status, text, errors = host.run("--help", program=inspector())
    assert (status, errors) == (0, "")
    for word in ("check", "diff OUTPUT", "explain GROUP/KEY", "-c, --config DIR", "--strict"):
        assert word in text
    assert all(len(line) < 100 for line in text.splitlines())
    assert host.run("-V", program=inspector()).stdout.startswith("cradle-inspect-config ")


def test_text_is_coloured_only_when_that_is_wanted(host: Host) -> None:
    host.conf("[A]\nK=1\n")
    fixed = ("--user-id", "1000", "--config", "/c", "show", "--color")
    terminal = {"TERM": "xterm"}
    assert "\x1b" not in host.run(*fixed, "auto", program=inspector(), env=terminal).stdout
    assert "\x1b[1m[A]\x1b[0m" in host.run(*fixed, "always", program=inspector()).stdout


@pytest.mark.parametrize(
    "environment, coloured",
    [("TERM=xterm", True), ("TERM=xterm NO_COLOR=1", False), ("TERM=dumb", False), ("", False)],
)
def test_a_terminal_shows_colours(host: Host, environment: str, coloured: bool) -> None:
    host.conf("[A]\nK=1\n")
    host.directory("/dev/pts")
    command = f"env {environment} {inspector()} -u1000 -c/c show"
    script = (
        "import os, pty, sys\nos.environ.pop('TERM', None)\n"
        f"sys.exit(pty.spawn(['/bin/sh', '-c', {command!r}]))\n"
    )
    mount = "mount -t devpts -o newinstance,ptmxmode=666 devpts /dev/pts; ln -sf pts/ptmx /dev/ptmx"
    host.file("/spawn.py", script)
    result = host.run("-c", f"{mount}; python3 /spawn.py", program="/bin/sh")
    assert "[A]" in result.stdout
    assert ("\x1b[1m" in result.stdout) == coloured


def test_graphviz_draws_the_graph(host: Host) -> None:
    host.conf('[A]\nK=${config:A/L}\nL="x"\n')
    fixed = ("--user-id", "1000", "--config", "/c", "graph", "--format", "svg")
    status, picture, _ = host.run(*fixed, program=inspector())
    assert status == 0 and "<svg" in picture and "A/K" in picture
    status, picture, errors = host.run(*fixed, program=inspector(), env={"PATH": "/nowhere"})
    assert (status, picture) == (2, "") and "Graphviz (dot) cannot be run\n" in errors


def test_diff_shows_what_a_run_makes(host: Host) -> None:
    host.file("/etc/locale.conf", "LANG=en_US\n")
    host.conf("[Config]\nHostname=a\nAppIdManglingType=None\n")
    host.script("/c/mount-hooks/a.sh", "echo /srv srv none bind 0 0\n")
    for kind in ("config", "lxc", "property"):
        fixed = ("--user-id", "1000", "--config", "/c", "--type", kind)
        assert host.run(*fixed, "/out").status == 0
        before = host.read("/out")
        assert host.run(*fixed, "--run", "diff", "/out", program=inspector()) == (0, "", "")
        host.file("/out", before + "more\n")
        result = host.run(*fixed, "--run", "diff", "/out", program=inspector())
        assert result.status == 1 and "\n-more\n" in result.stdout
        host.file("/out", before)
        host.run(*fixed, "diff", "/out", program=inspector())
        assert host.read("/out") == before


def test_diff_is_a_patch_unless_a_terminal_shows_it(host: Host) -> None:
    host.conf("[A]\nKey=a\tb\x1b[5m\n")
    host.file("/out", "# This is an automatically generated file, do not edit\n")
    command = f"{inspector()} --user-id 1000 --config /c diff /out"
    host.run("-c", f"{command} | patch /out", program="/bin/sh")
    assert host.run("-u1000", "-c/c", "diff", "/out", program=inspector()) == (0, "", "")
    host.file("/out", "")
    host.directory("/dev/pts")
    host.file(
        "/spawn.py",
        f"import pty, sys\nsys.exit(pty.spawn(['/bin/sh', '-c', 'NO_COLOR=1 {command}']))\n",
    )
    mount = "mount -t devpts -o newinstance,ptmxmode=666 devpts /dev/pts; ln -sf pts/ptmx /dev/ptmx"
    result = host.run("-c", f"{mount}; python3 /spawn.py", program="/bin/sh")
    assert r"+Key=a\tb\x1b[5m" in result.stdout and "\x1b" not in result.stdout


def test_diff_tells_its_troubles(host: Host) -> None:
    host.conf("[Config]\nHostname=a\n")
    host.file("/out", "")
    trouble = "cradle-inspect-config: "
    fixed = ("--config", "/c", "diff")
    result = host.run(*fixed, "-u1000", "/nope", program=inspector())
    assert result == (2, "", trouble + "/nope: No such file or directory\n")
    result = host.run(*fixed, "/out", program=inspector())
    assert result == (2, "", trouble + "the user of a run is not known; name one with --user-id\n")
    result = host.run(*fixed, "-u1000", "-tproperty", "/out", program=inspector())
    assert result.status == 2 and result.stderr.endswith(trouble + "the run would fail\n")
