"""How a project outside the tree is built against the staged installation."""
import os
import pathlib
import shutil
import subprocess

BUILD = pathlib.Path(os.environ["HX_BUILD"])
SOURCE = pathlib.Path(os.environ["HX_SOURCE"])
STAGE = pathlib.Path(os.environ["HX_STAGE"])
VERSION = os.environ["HX_VERSION"]
LIBDIR = os.environ["HX_LIBDIR"]
QT = int(os.environ["HX_QT"])
SUFFIX = "" if QT == 5 else f"-qt{QT}"
KIT = "HxMidiKit" + SUFFIX
PREFIX = STAGE / "prefix"
EXAMPLES = PREFIX / "share/doc/HxMidiKit/examples"
HERE = pathlib.Path(__file__).parent

ENVIRONMENT = dict(
    os.environ,
    CMAKE_PREFIX_PATH=str(PREFIX),
    PKG_CONFIG_PATH=str(PREFIX / LIBDIR / "pkgconfig"),
    PATH=f"{PREFIX / 'bin'}{os.pathsep}{os.environ['PATH']}",
)


def run(*command, folder=STAGE, status=0, said=False):
    """Standard output of a command that must end with `status`; else fails, with all its output. With `said` what
    it printed as errors too."""
    done = subprocess.run(
        [str(part) for part in command], cwd=folder, env=ENVIRONMENT, text=True,
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if done.returncode != status:
        raise AssertionError(
            f"{command} ended with {done.returncode}, not {status}:\n{done.stdout}{done.stderr}")
    return done.stdout + (done.stderr if said else "")


def fresh_copy(source, name):
    """A copy of a project's folder, in a new folder of this name."""
    folder = STAGE / name
    shutil.rmtree(folder, ignore_errors=True)
    return pathlib.Path(shutil.copytree(source, folder))


def build(project, name):
    """Builds a copy of the project; returns the folder with what came out."""
    folder = fresh_copy(project, name)
    run("cmake", "-S", ".", "-B", "build", f"-DKIT={KIT}", folder=folder)
    run("cmake", "--build", "build", folder=folder)
    return folder / "build"


def installed_plugin():
    plugins = list((PREFIX / LIBDIR / f"hxmidikit{SUFFIX}/plugins").iterdir())
    assert len(plugins) == 1, plugins
    return plugins[0]
