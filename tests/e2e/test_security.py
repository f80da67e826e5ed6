# SPDX-License-Identifier: MIT
"""What docs/security.md says of the program: what it trusts and what it writes."""

from host import Host, generated


def test_a_quote_in_the_instance_name_ends_the_argument_of_a_hook(host: Host) -> None:
    host.conf("[Config]\nKey=1\n")
    host.script("/c/mount-hooks/a.sh", "exit 0\n")
    host.directory("/srv")
    assert host.generate("--instance", "x'; echo done >/srv/proof; '").status == 0
    assert host.read("/srv/proof") == "done\n"


def test_a_hook_inherits_the_environment(host: Host) -> None:
    host.conf("[Config]\nKey=1\n")
    host.script("/c/mount-hooks/a.sh", 'echo "$PATH $EXTRA" >/environment\n')
    assert host.generate(env={"EXTRA": "given"}) == (0, "", "")
    assert host.read("/environment") == "/usr/bin:/bin given\n"


def test_a_log_file_has_the_mode_that_the_mask_leaves(host: Host) -> None:
    host.conf("A=${nope}\n")
    assert host.generate(env={"CRADLE_LOGGING_TARGET": "/run.log"}, umask=0o027) == (0, "", "")
    assert host.mode("/run.log") == 0o640


def test_the_output_is_written_through_a_link(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    host.link("/out.conf", "/elsewhere.conf")
    assert host.generate() == (0, "", "")
    assert host.read("/elsewhere.conf") == generated("\n[A]\nKey=1\n")


def tree(host: Host) -> dict[str, tuple[int, ...]]:
    """Everything on the host with its mode and owner, files with their size and time as well."""
    found: dict[str, tuple[int, ...]] = {}
    for path in host.root.rglob("*"):
        status = path.lstat()
        content = (status.st_size, status.st_mtime_ns) if path.is_file() else ()
        found[str(path.relative_to(host.root))] = (status.st_mode, status.st_uid, *content)
    return found


def test_nothing_but_the_output_is_created_or_changed(host: Host) -> None:
    host.conf("[A]\nKey=${USER}\n")
    before = tree(host)
    assert host.generate() == (0, "", "")
    after = tree(host)
    assert after.pop("out.conf") is not None
    assert after == before


def test_a_setting_of_the_user_is_neither_expanded_nor_split(host: Host) -> None:
    host.dconf("/home/alice/.config", "[d]\nkey='${system:id};$$'\n")
    host.conf("[A]\nKey=${dconf:/d/key}\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=${system:id};$$\n")


def test_a_setting_of_the_user_is_a_template_when_the_result_is_read_back(host: Host) -> None:
    host.dconf("/home/alice/.config", "[d]\nkey='${system:echo done >/proof}'\n")
    host.conf("[A]\nKey=${dconf:/d/key}\n")
    host.directory("/generated")
    assert host.run("--user-id", "1000", "--config", "/c", "/generated/a.conf") == (0, "", "")
    assert not host.exists("/proof")
    host.run("--type", "lxc", "--config", "/generated", "/out.lxc")
    assert host.read("/proof") == "done\n"
