"""What is too long is found."""
import unittest

import lengths


def function(lines):
    return "int sum()\n{\n" + "    add();\n" * lines + "}\n"


class Lengths(unittest.TestCase):
    def test_nothing_is_said_of_what_is_short(self):
        self.assertEqual(list(lengths.complaints({"a.cpp": function(8), "b.py": "\n" * 400})), [])

    def test_a_file_that_is_too_long_is_found(self):
        self.assertEqual(list(lengths.complaints({"b.py": "\n" * 401})),
                         ["b.py: 401 lines; a file has at most 400"])

    def test_a_function_that_is_too_long_is_found(self):
        files = {"a.cpp": "class A {\n};\n\n" + function(61) + function(1) + function(1)}
        self.assertEqual(list(lengths.complaints(files)), ["a.cpp:5: a function of 61 lines; at most 60"])

    def test_functions_that_are_long_in_the_middle_are_found(self):
        self.assertEqual(list(lengths.complaints({"a.cpp": function(9) + function(9) + function(1)})),
                         ["the middle function has 9 lines; at most 8"])

    def test_members_and_single_lines_are_functions_and_classes_are_not(self):
        text = ("class A {\npublic:\n    A() : m_a(1)\n    {\n        go();\n        go();\n    }\n"
                "    int a() const { return m_a; }\n    int m_a;\n};\n")
        self.assertEqual(sorted(length for _, length in lengths.functions(text)), [1, 2])


if __name__ == "__main__":
    unittest.main()
