"""Examples in docstrings, and stubs."""

import ast
import doctest
import re
import subprocess
import sys
from pathlib import Path

from conftest import ROOT, need

import zellap10
from zellap10 import _native

STUBS = ast.parse((Path(_native.__file__).parent / "_native.pyi").read_text())


def documented():
    """Each public class, method, property and function of the C++ part by its dotted name."""
    for name, value in vars(_native).items():
        if not name.startswith("_"):
            yield name, value
        if isinstance(value, type) and value is not _native.ChartError:
            yield from ((f"{name}.{key}", each) for key, each in vars(value).items() if not key.startswith("_"))


def test_examples_of_the_native_part(samples, monkeypatch):
    monkeypatch.chdir(samples)
    runner = doctest.DocTestRunner()
    for name, value in documented():
        test = doctest.DocTestParser().get_doctest(value.__doc__ or "", vars(zellap10).copy(), name, None, 0)
        runner.run(test)
    assert runner.summarize().failed == 0
    assert runner.tries > 15


def test_the_code_of_the_page_runs(samples, tmp_path, monkeypatch, capsys):
    need("matplotlib")
    for file in samples.iterdir():
        (tmp_path / file.name).symlink_to(file)
    monkeypatch.chdir(tmp_path)
    monkeypatch.setenv("MPLBACKEND", "Agg")
    page = (ROOT / "docs/python.md").read_text()
    for block in re.findall(r"```python\n(.*?)```", page, re.DOTALL):
        exec(block, {})
    assert capsys.readouterr().out == "ENGLISH CHANNEL (6111, 3814)\n"
    assert (tmp_path / "quilt.png").stat().st_size > 50000


def stubbed():
    """The names of the stubs, with the parameters of functions."""
    for node in STUBS.body:
        if isinstance(node, ast.ClassDef):
            yield node.name, None
            yield from ((f"{node.name}.{each.name}", each) for each in node.body if isinstance(each, ast.FunctionDef))
        elif isinstance(node, ast.FunctionDef):
            yield node.name, node


def test_stubs_have_the_names_and_parameters_of_the_module():
    stubs = {name: node for name, node in stubbed() if "__" not in name}
    members = dict(documented())
    assert stubs.keys() == members.keys()
    for name, node in stubs.items():
        assert members[name].__doc__, name
        signature = members[name].__doc__.partition("\n")[0]
        if node is not None and "(self: " in signature:
            parameters = [each.arg for each in node.args.args + node.args.kwonlyargs]
            assert re.findall(r"(\w+): (?!\w+\()", signature.partition(" -> ")[0]) == parameters, name


def test_types():
    need("mypy")
    command = [sys.executable, "-m", "mypy", "--cache-dir", "/dev/null", "zellap10"]
    run = subprocess.run(command, cwd=ROOT / "python", capture_output=True, text=True)
    assert run.returncode == 0, run.stdout
