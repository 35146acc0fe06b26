"""Builds the wheel by CMake, so that `pip install .` needs no other Python package and no network.

pip calls the functions below (PEP 517). The package is compiled together with the library, which is linked statically.
The environment variable CMAKE_ARGS may hold further options of CMake.
"""

import base64
import hashlib
import os
import re
import shlex
import subprocess
import sys
import sysconfig
import tempfile
import tomllib
import zipfile
from pathlib import Path

PYTHON_DIR = Path(__file__).resolve().parents[1]
SOURCE_DIR = PYTHON_DIR.parent

OPTIONS = {
    "CMAKE_BUILD_TYPE": "Release",
    "CMAKE_POSITION_INDEPENDENT_CODE": "ON",
    "BUILD_SHARED_LIBS": "OFF",
    "ZELLAP10_PYTHON": "ON",
    "ZELLAP10_TESTS": "OFF",
    "ZELLAP10_EXAMPLES": "OFF",
    "ZELLAP10_VIEWER": "OFF",
    "Python_EXECUTABLE": sys.executable,
}


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """Compiles the package, writes the wheel and returns its file name."""
    wheel = f"zellap10-{library_version()}-{tag()}.whl"
    with tempfile.TemporaryDirectory() as scratch:
        build, content = Path(scratch, "build"), Path(scratch, "content")
        compile_package(build, content)
        info = prepare_metadata_for_build_wheel(content)
        write_wheel(Path(wheel_directory, wheel), content, info)
    return wheel


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    """Writes the dist-info folder and returns its name; without it pip compiles twice."""
    info = Path(metadata_directory, f"zellap10-{library_version()}.dist-info")
    info.mkdir()
    for file, text in metadata(library_version()).items():
        (info / file).write_text(text)
    return info.name


def build_sdist(sdist_directory, config_settings=None):
    """Refuses: the sources lie outside this folder."""
    raise RuntimeError("there is no source distribution: install from the repository")


def compile_package(build, content):
    """Configures, builds and installs the package into the folder `content`."""
    options = [f"-D{key}={value}" for key, value in OPTIONS.items()]
    options += shlex.split(os.environ.get("CMAKE_ARGS", ""))
    jobs = str(os.cpu_count() or 1)
    for command in (
        ["cmake", "-S", SOURCE_DIR, "-B", build, "-G", "Ninja", *options],
        ["cmake", "--build", build, "--parallel", jobs, "--target", "zellap10_python"],
        ["cmake", "--install", build, "--prefix", content, "--component", "python"],
    ):
        subprocess.run(command, check=True, stdout=sys.stderr)


def library_version():
    """The version in project() of the root CMakeLists.txt."""
    text = (SOURCE_DIR / "CMakeLists.txt").read_text()
    found = re.search(r"^\s*VERSION ([0-9.]+)$", text, re.MULTILINE)
    if found is None:
        raise RuntimeError("CMakeLists.txt has no version")
    return found[1]


def tag():
    """The interpreter and platform that the wheel is for."""
    version = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = re.sub(r"[-.]", "_", sysconfig.get_platform())
    return f"{version}-{version}-{platform}"


def metadata(version):
    """The files of the dist-info folder, without RECORD."""
    project = tomllib.loads((PYTHON_DIR / "pyproject.toml").read_text())["project"]
    lines = [
        "Metadata-Version: 2.1",
        f"Name: {project['name']}",
        f"Version: {version}",
        f"Summary: {project['description']}",
        f"Requires-Python: {project['requires-python']}",
    ]
    lines += [f"Requires-Dist: {package}" for package in project["dependencies"]]
    for extra, packages in project["optional-dependencies"].items():
        lines.append(f"Provides-Extra: {extra}")
        lines += [f'Requires-Dist: {package}; extra == "{extra}"' for package in packages]
    scripts = [f"{command} = {function}" for command, function in project["scripts"].items()]
    return {
        "METADATA": "\n".join(lines) + "\n",
        "WHEEL": f"Wheel-Version: 1.0\nGenerator: cmake_backend\nRoot-Is-Purelib: false\nTag: {tag()}\n",
        "entry_points.txt": "\n".join(["[console_scripts]", *scripts]) + "\n",
    }


def write_wheel(path, content, info):
    """Zips the folder `content`, with a RECORD of each file's digest and size."""
    record = f"{info}/RECORD"
    rows = []
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as wheel:
        for file in sorted(entry for entry in content.rglob("*") if entry.is_file()):
            name = file.relative_to(content).as_posix()
            data = file.read_bytes()
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            rows.append(f"{name},sha256={digest},{len(data)}\n")
            wheel.write(file, name)
        wheel.writestr(record, "".join(rows) + f"{record},,\n")
