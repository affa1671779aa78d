"""Turns the way to a broken claim of update.pml into a scenario of the sweep.

The model prints a line at each event. Its first message is the sweep's third: identity and version are asked
before. Between the closing and the version the sweep asks for the identity once more.
"""

from collections import deque

BEFORE, AFTER = 2, 3
LATE = 2200001  # microseconds: just after the timeout
FIRST_WRITES, REST_OF_FIRST = 3, 50  # an erasure has three writes, then come the bytes
PART_OF_DATA = 20  # some of the bytes of a later message
EVENTS = ("send", "answer", "take", "hear", "silence", "write", "cut", "cell",
          "lose", "double", "garble", "change", "false", "other", "same")


class Course:
    """What has happened so far, with the numbers that the sweep gives to the messages."""

    def __init__(self, messages, cut):
        self.messages, self.cut_kind = messages, cut
        self.sent = self.answered = 0  # messages of the model, in each direction
        self.topic = self.writes = self.cells = 0
        self.handled = (0, 0)  # the command under way: its number in the sweep, and what it is about
        self.to_product, self.to_host = deque(), deque()
        self.faults = []

    def number(self, count, topic):
        return count + (AFTER if topic > self.messages + 1 else BEFORE)

    def add(self, direction, number, fault, strikes="x1"):
        self.faults.append(f"{direction} {number}.{fault} {strikes}")

    def send(self, topic):
        self.sent += 1
        self.topic, self.direction = int(topic), "out"
        self.last = self.number(self.sent, self.topic)
        self.to_product.append((self.last, self.topic))

    def answer(self, _):
        self.answered += 1
        self.direction = "in"
        self.last = self.number(self.answered, self.handled[1])
        self.to_host.append(self.last)

    def queue(self):
        return self.to_product if self.direction == "out" else self.to_host

    def lose(self):
        self.queue().pop()
        self.add(self.direction, self.last, "0 truncate")

    def double(self):
        self.queue().append(self.queue()[-1])
        self.add(self.direction, self.last, f"0 old {self.last}")

    def garble(self):
        if self.topic == self.messages + 1:  # nothing in a closing tells that it is damaged
            return self.add("out", self.last, "0 answer 01")
        place = 17 if self.topic < self.messages else 13 if self.topic == self.messages else 5
        return self.add("out", self.last, f"{place} flip 01")

    def change(self):  # two bits that the sum of the message does not tell
        self.add("out", self.last, "17 flip 40")
        self.add("out", self.last, "18 flip 40")

    def false(self, status):
        self.add("in", self.last, f"0 answer 0{status}")

    def other(self):
        self.add("in", self.last, "7 flip 01")

    def take(self, _):
        self.handled = self.to_product.popleft()
        self.writes = 0

    def hear(self):
        self.to_host.popleft()

    def silence(self):
        if self.to_product:
            self.add("out", self.to_product[0][0], f"0 delay {LATE}")
        elif self.to_host:
            self.add("in", self.to_host[0], f"0 delay {LATE}")

    def cell(self):
        self.cells += 1
        self.add("out", self.handled[0], f"0 bad-cell {self.cells}")

    def same(self, _):  # the factory's version, read as the image's
        self.faults.append("in version.10 flip 07 x*")

    def write(self):
        self.writes += 1

    def cut(self):
        number, topic = self.handled
        if topic == 0:
            done = self.writes - 1 if self.writes <= FIRST_WRITES + 1 else REST_OF_FIRST
        elif topic < self.messages:
            done = 0 if self.writes == 1 else PART_OF_DATA
        else:
            done = self.writes - 1
        self.add("out", number, f"0 {self.cut_kind} {done}")


def scenario_of(lines, messages, cut):
    """The scenario, as a line; empty when nothing went wrong on the way."""
    course = Course(messages, cut)
    for line in lines:
        words = line.split()
        if words and words[0] in EVENTS:
            getattr(course, words[0])(*words[1:])
    return " + ".join(course.faults) or "out 1.0 none x1"
