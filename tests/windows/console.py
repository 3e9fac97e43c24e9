#!/usr/bin/env python3
"""Runs a program in a console, presses Ctrl-C when it has said a word, and ends as it ends.   console.py WORD PROGRAM [ARGUMENT...]"""
import os
import pty
import re
import sys

word = sys.argv[1].encode()
child, console = pty.fork()
if child == 0:
    os.execv(sys.argv[2], sys.argv[2:])
drawn, pressed = b"", False
while True:
    try:
        drawn += os.read(console, 4096)
    except OSError:  # the other end is gone
        break
    said = re.sub(rb"\x1b\[[?\d;]*[A-Za-z]", b"", drawn)  # each letter comes with movements of the cursor, a space as one
    if not pressed and word in said:
        pressed = os.write(console, b"\3") == 1
print(said.decode(errors="replace"))
sys.exit(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]))
