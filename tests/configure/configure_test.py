"""What configuring the project says and does: its parts with what they do not need hidden, the project
as a part of another, folders that others have chosen.

Environment: HX_SOURCE is the project, HX_QT the major version of Qt it is built with, CXX the compiler.
"""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["HX_SOURCE"])
QT = int(os.environ["HX_QT"])
SUFFIX = "" if QT == 5 else f"-qt{QT}"
QT_PACKAGES = {5: "qtbase5-dev", 6: "qt6-base-dev qt6-5compat-dev"}
PACKAGES = {"Sodium": "libsodium-dev", "RtMidi": "librtmidi-dev", "CLI11": "libcli11-dev", "GTest": "libgtest-dev libgmock-dev",
            "Python3": "python3"}
NEEDED = {"plugin": [], "host": ["Sodium", "RtMidi"], "apps": ["Sodium", "RtMidi", "CLI11"], "all": list(PACKAGES)}

PARENT = """\
cmake_minimum_required(VERSION 3.18)
project(around LANGUAGES CXX)
add_subdirectory(${HX_SOURCE} kit)
add_executable(user main.cpp)
target_link_libraries(user PRIVATE HxMidiKit::HxMidiData HxMidiKit::HxDeviceInterface)
"""


def has_qt(major):
    return subprocess.run(["pkg-config", "--exists", f"Qt{major}Core"], check=False).returncode == 0


needs_both_majors = unittest.skipUnless(has_qt(5) and has_qt(6), "needs Qt 5 and Qt 6: scripts/setup --qt5 --qt6")


class Configure(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.folder = pathlib.Path(holder.name)

    def configure(self, *options, source=SOURCE, qt=QT, succeeds=True):
        chosen = [f"-DHX_QT={qt}"] if qt else []
        done = subprocess.run(["cmake", "-S", source, "-B", self.folder / "build", "-G", "Ninja", *chosen, *options],
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertEqual(done.returncode == 0, succeeds, done.stdout)
        return " ".join(done.stdout.split())

    def cache(self):
        """The names in the cache that a person sets, types and values aside."""
        text = (self.folder / "build/CMakeCache.txt").read_text(encoding="utf-8")
        return set(re.findall(r"^([A-Za-z]\w*):(?!INTERNAL|STATIC)", text, re.MULTILINE))

    def check_part(self, part):
        hidden = {name: f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in PACKAGES}
        allowed = [option for name, option in hidden.items() if name not in NEEDED[part]]
        self.configure(f"-DHX_PARTS={part}", *allowed)
        for name in NEEDED[part]:
            said = self.configure(f"-DHX_PARTS={part}", hidden[name], succeeds=False)
            self.assertIn(f"is missing, and HX_PARTS={part} needs it. Debian: apt install {PACKAGES[name]}.",
                          said)
            self.configure(f"-UCMAKE_DISABLE_FIND_PACKAGE_{name}", f"-DHX_PARTS={part}")

    def test_the_plugin_part_needs_qt_core_alone(self):
        self.check_part("plugin")

    def test_a_missing_qt_names_its_packages(self):
        for major, packages in QT_PACKAGES.items():
            said = self.configure("-DHX_PARTS=plugin", f"-DCMAKE_DISABLE_FIND_PACKAGE_Qt{major}=ON", qt=major,
                                  succeeds=False)
            self.assertIn(f"Debian: apt install {packages}.", said)

    def test_the_plugin_part_brings_its_suites_where_googletest_is(self):
        suites = {"mididata_test", "mididata_plain_test", "test_plugin"}
        for hidden, expected in ([], suites), (["-DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON"], set()):
            self.configure("-DHX_PARTS=plugin", *hidden)
            rules = (self.folder / "build/build.ninja").read_text(encoding="utf-8")
            self.assertEqual(expected, {name for name in suites if f"build {name}: phony" in rules})

    def test_the_host_part_needs_the_midi_and_signature_libraries(self):
        self.check_part("host")

    def test_the_apps_part_needs_the_command_line_library(self):
        self.check_part("apps")

    def test_all_needs_the_test_libraries(self):
        self.check_part("all")

    def test_an_unknown_part_is_refused(self):
        said = self.configure("-DHX_PARTS=plugins", succeeds=False)
        self.assertIn('HX_PARTS is "plugins". Expected: plugin (', said)

    @needs_both_majors
    def test_qt_5_unless_6_is_asked_for(self):
        for asked, major in ((None, 5), (6, 6)):
            self.configure("-DHX_PARTS=plugin", qt=asked)
            commands = (self.folder / "build/compile_commands.json").read_text(encoding="utf-8")
            self.assertEqual({str(major)}, set(re.findall(r"/qt(\d)/QtCore ", commands)))
        said = self.configure("-DHX_PARTS=plugin", qt=4, succeeds=False)
        self.assertIn('HX_QT is "4". Expected: 5 (Qt 5.12 to 5.15) or 6 (Qt 6.4 or newer).', said)

    @needs_both_majors
    def test_a_project_around_this_one_has_chosen_its_qt(self):
        around = self.folder / "around"
        around.mkdir()
        (around / "main.cpp").write_text("int main() {}\n", encoding="utf-8")
        project = PARENT.replace("add_subdirectory", "find_package(Qt6 REQUIRED COMPONENTS Core)\nadd_subdirectory")
        (around / "CMakeLists.txt").write_text(project, encoding="utf-8")
        self.configure(f"-DHX_SOURCE={SOURCE}", source=around, qt=None)
        commands = (self.folder / "build/compile_commands.json").read_text(encoding="utf-8")
        self.assertEqual({"6"}, set(re.findall(r"/qt(\d)/QtCore ", commands)))

    def test_warnings_are_errors_only_when_asked_for(self):
        for option, are_errors in ((), False), (("-DHX_WERROR=ON",), True):
            self.configure("-DHX_PARTS=plugin", *option)
            commands = (self.folder / "build/compile_commands.json").read_text(encoding="utf-8")
            self.assertEqual("-Werror" in commands, are_errors)

    def test_a_project_around_this_one_keeps_its_cache(self):
        around = self.folder / "around"
        around.mkdir()
        (around / "main.cpp").write_text("int main() {}\n", encoding="utf-8")
        project = around / "CMakeLists.txt"
        # Found before: Qt 6 itself adds names to the cache.
        text = PARENT.replace("add_subdirectory", f"find_package(Qt{QT} REQUIRED COMPONENTS Core)\nadd_subdirectory")
        project.write_text(re.sub("add_subdirectory.*|target_link.*", "", text), encoding="utf-8")
        self.configure(source=around)
        before = self.cache()
        project.write_text(text, encoding="utf-8")
        self.configure(f"-DHX_SOURCE={SOURCE}", source=around)
        added = {name for name in self.cache() - before if not re.fullmatch(r"\w+_DIR", name)}
        self.assertEqual({"HX_SOURCE"}, added)
        tests = subprocess.run(["ctest", "--test-dir", self.folder / "build", "-N"], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True).stdout
        self.assertIn("Total Tests: 0", tests)

    def test_absolute_folders_stand_as_they_are_in_pkg_config_files(self):
        self.configure("-DHX_PARTS=plugin", "-DCMAKE_INSTALL_LIBDIR=/srv/lib", "-DCMAKE_INSTALL_PREFIX=/srv")
        text = (self.folder / f"build/pkgconfig/HxMidiData{SUFFIX}.pc").read_text(encoding="utf-8")
        self.assertIn("\nlibdir=/srv/lib\n", text)
        self.assertIn("\nincludedir=${prefix}/include/hxmidikit" + SUFFIX + "\n", text)
        self.assertIn(f"\nplugindir=/srv/lib/hxmidikit{SUFFIX}/plugins\n", text)

    def test_each_component_installs_its_own_files(self):
        self.configure()
        script = (self.folder / "build/cmake_install.cmake").read_text(encoding="utf-8")
        scripts = [script] + [file.read_text(encoding="utf-8")
                              for file in (self.folder / "build").rglob("cmake_install.cmake")]
        components = set(re.findall(r'CMAKE_INSTALL_COMPONENT STREQUAL "(\w+)"', "".join(scripts)))
        self.assertEqual({"plugin", "devel", "tools"}, components)


if __name__ == "__main__":
    unittest.main()
