"""Tests of newer_names.py, newer_symbols.py and qt_versions.py: each thing that these must find."""
import unittest
import xml.etree.ElementTree as ElementTree

import newer_names
import newer_symbols
import qt_versions

INDEX = """<INDEX><root><namespace name="">
  <namespace name="Qt">
    <function name="endl" since="5.14"/>
    <enum name="SplitBehaviorFlags" since="5.14"><value name="SkipEmptyParts"/></enum>
  </namespace>
  <class name="QString"><enum name="SplitBehavior"><value name="SkipEmptyParts"/></enum>
    <function name="split" since="5.14"/><function name="split"/></class>
  <class name="QTextStream"><function name="endl"/></class>
  <class name="QCalendar" since="5.14"><function name="monthsInYear"/></class>
  <class name="QTimer"><function name="callOnTimeout" since="5.12"/></class>
  <class name="QFile"><function name="moveToTrash" since="5.15"/></class>
</namespace></root></INDEX>"""


class Table(unittest.TestCase):
    def test_the_table_has_what_is_newer_with_its_scope_where_an_older_part_has_the_name(self):
        names = newer_names.Names()
        names.add(ElementTree.fromstring(INDEX))
        self.assertEqual(sorted(names.newer()), [
            "QCalendar 5.14", "Qt::SkipEmptyParts 5.14", "Qt::endl 5.14", "SplitBehaviorFlags 5.14",
            "moveToTrash 5.15"])

    def test_the_table_of_the_tree_has_well_known_names(self):
        table = newer_names.read_table()
        for name in ("Qt::SkipEmptyParts", "Qt::endl", "Q_DISABLE_COPY_MOVE", "QRecursiveMutex", "idClicked"):
            self.assertIn(name, table)


class Names(unittest.TestCase):
    def found(self, text, path="host/base/Clock.cpp"):
        return list(newer_names.complaints({path: text}, newer_names.read_table()))

    def test_a_newer_enumerator_is_found(self):
        self.assertEqual(self.found('auto words =\n    text.split(" ", Qt::SkipEmptyParts);\n'), [
            "host/base/Clock.cpp:2: Qt::SkipEmptyParts came with Qt 5.14; expected what Qt 5.12 has"])

    def test_the_older_enumerator_of_this_name_is_not(self):
        self.assertEqual(self.found("text.split(' ', QString::SkipEmptyParts);"), [])

    def test_a_newer_member_is_found_where_it_is_called(self):
        self.assertEqual(self.found("file.moveToTrash();"), [
            "host/base/Clock.cpp:1: moveToTrash came with Qt 5.15; expected what Qt 5.12 has"])

    def test_a_newer_member_is_found_where_it_is_taken_and_a_type_wherever_it_stands(self):
        found = self.found("connect(group, &QButtonGroup::idClicked, this, f);\n"
                           "/* QRecursiveMutex\n*/ QRecursiveMutex m;")
        self.assertEqual([line.split(" came")[0] for line in found],
                         ["host/base/Clock.cpp:3: QRecursiveMutex", "host/base/Clock.cpp:1: idClicked"])

    def test_comments_texts_and_names_of_our_own_are_not(self):
        self.assertEqual(self.found('// Qt::endl\n/* Qt::hex */ "Qt::dec"; int marker = markdown + 1;'), [])

    def test_what_only_a_test_names_is_not(self):
        self.assertEqual(self.found("Qt::endl", "tests/host/ClockTest.cpp"), [])


class Symbols(unittest.TestCase):
    FIRST = " _ZN4QOldEv@Qt_5 5.0.2\n _ZN4QNewEv@Qt_5 5.14.1\n qt_version_tag@Qt_5.15 5.15.1\n _ZN4Qt0Ev@Qt_5 0 1\n"
    NM = " U _ZN4QNewEv@Qt_5\n U memcpy@GLIBC_2.14\n U _ZN4QOldEv@Qt_5\n"

    def found(self, *functions):
        return list(newer_symbols.complaints(functions, newer_symbols.first_versions(self.FIRST), (5, 12)))

    def test_the_functions_of_qt_are_read_from_what_nm_prints(self):
        self.assertEqual(newer_symbols.needed(self.NM), ["_ZN4QNewEv", "_ZN4QOldEv"])

    def test_a_newer_function_is_found(self):
        self.assertEqual(self.found("_ZN4QOldEv", "_ZN4QNewEv", "_ZN4Qt0Ev"),
                         ["_ZN4QNewEv: came with Qt 5.14; expected what Qt 5.12 has"])

    def test_a_function_that_is_not_written_down_is_found(self):
        self.assertEqual(self.found("_ZN4QGoneEv"),
                         ["_ZN4QGoneEv: not among the functions that Debian has written down"])

    def test_what_the_same_line_means_with_older_headers_is_not(self):
        self.assertEqual(self.found("qt_version_tag"), [])


class Versions(unittest.TestCase):
    def found(self, **files):
        return qt_versions.complaints({path.replace("__", "/") + ".h": text for path, text in files.items()})

    def test_five_questions_in_the_one_header_are_allowed(self):
        self.assertEqual(self.found(qt__Versions="#if QT_VERSION < 1\n" * 5), [])

    def test_a_sixth_question_is_found(self):
        self.assertEqual(self.found(qt__Versions="#if QT_VERSION < 1\n" * 6),
                         ["qt/Versions.h: asks 6 times for Qt's version; expected 1 to 5"])

    def test_a_question_in_another_file_is_found(self):
        self.assertEqual(
            self.found(qt__Versions="#if QT_VERSION < 1\n", host__Clock="x\n#  elif QT_VERSION_MAJOR > 5\n"),
            ["host/Clock.h: asks for Qt's version; only qt/Versions.h may"])


if __name__ == "__main__":
    unittest.main()
