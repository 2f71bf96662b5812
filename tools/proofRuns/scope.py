"""The size of the small scope, counted without the program that runs it: tests/model/smallScope.h describes it."""

from itertools import product
from typing import NamedTuple

DOCUMENTS = 4  # null, empty, not JSON, not an object
ANSWERS_OF_A_RULE = 8
WEB = 0


class Size(NamedTuple):
    """x."""

    runs: int
    combinations: int


def _is_pattern(types: tuple[int, ...]) -> bool:
    """Whether the words other than "web" are numbered in the order of their first use."""
    words = [each for each in types if each != WEB]
    return list(dict.fromkeys(words)) == list(range(1, len(set(words)) + 1))


def _pairs(rules: int) -> int:
    """Type patterns with their allow lists."""
    pairs = 0
    for types in product(range(rules + 1), repeat=rules):
        if _is_pattern(types):
            keys = {f"guid {rule}" if each == WEB else each for rule, each in enumerate(types)}
            pairs += 1 + sum(1 for _ in product(("none", "other", "match"), repeat=len(keys)))
    return pairs


def _of_one_pair(rules: int) -> Size:
    answers = DOCUMENTS + ANSWERS_OF_A_RULE ** rules
    runs = combinations = 0
    for _action, _started, _sink, _exception in product(range(3), range(2), range(2), range(3)):
        for mode, flags in product((1, 2, 3, 4, 5), (0, 4, 0x10, 0x14)):
            for result in ("answered", "network error", "error"):
                combinations += answers
                if mode == 5 or flags & 4:
                    runs += result == "answered"  # no query
                elif result != "answered" or mode == 1:
                    runs += 2  # null, unreadable
                else:
                    runs += answers
    return Size(runs, combinations)


def size(rules: int, share: int, shares: int) -> Size:
    pairs = len(range(share, _pairs(rules), shares))
    each = _of_one_pair(rules)
    return Size(pairs * each.runs, pairs * each.combinations)
