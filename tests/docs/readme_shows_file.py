"""Fails unless a fenced C++ block of the document (argument 1) equals the file (argument 2)."""
import re
import sys

document, source = (open(name, encoding="utf-8").read() for name in sys.argv[1:3])
blocks = re.findall(r"^```cpp\n(.*?)^```$", document, re.MULTILINE | re.DOTALL)
if source not in blocks:
    sys.exit(f"none of the {len(blocks)} C++ blocks of {sys.argv[1]} equals {sys.argv[2]}")
