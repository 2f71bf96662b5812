"""Runs a program and passes on its output as it arrives. Imports little: each test case starts a new interpreter."""

from __future__ import annotations

import os
import select

TYPE_CHECKING = False  # importing typing takes as long as all other imports
if TYPE_CHECKING:
    from collections.abc import Callable

GRACE_SECONDS = 5.0  # for output that is in transit when the program has ended
CHUNK = 65536


class Ended:
    """How a program ended."""

    def __init__(self, code: int, is_held: bool) -> None:
        self.code = code  # negative: the number of the signal that ended the program
        self.is_held = is_held  # whether another process still held its output after the grace


def run(command: list[str], environment: dict[str, str], on_output: Callable[[bytes], None],
        on_errors: Callable[[bytes], None] | None) -> Ended:
    """Runs the program and calls back with each piece of its output. Raises OSError if the program cannot be started.

    Without `on_errors` the program inherits the standard error of this process. Its standard input is empty.
    """
    receivers: dict[int, Callable[[bytes], None]] = {}
    output, output_end = os.pipe()
    receivers[output] = on_output
    actions: list[tuple[int, ...] | tuple[int, int, str, int, int]] = [
        (os.POSIX_SPAWN_OPEN, 0, "/dev/null", os.O_RDONLY, 0), (os.POSIX_SPAWN_DUP2, output_end, 1)]
    ends = [output_end]
    if on_errors is not None:
        errors, errors_end = os.pipe()
        receivers[errors] = on_errors
        actions.append((os.POSIX_SPAWN_DUP2, errors_end, 2))
        ends.append(errors_end)
    try:
        child = os.posix_spawnp(command[0], command, environment, file_actions=actions)
    finally:
        for end in ends:
            os.close(end)
    is_held = _pass_on(receivers, child)
    for stream in receivers:
        os.close(stream)
    status = os.waitpid(child, 0)[1]
    return Ended(os.waitstatus_to_exitcode(status), is_held)


def _pass_on(receivers: dict[int, Callable[[bytes], None]], child: int) -> bool:
    """Reads until all streams end, or until the grace period after the end of the child.

    Returns whether a stream has not ended.
    """
    poll = select.poll()
    for stream in receivers:
        poll.register(stream, select.POLLIN)
    process = os.pidfd_open(child)
    poll.register(process, select.POLLIN)
    try:
        is_running, is_open = True, set(receivers)
        while is_running or is_open:
            ready = poll.poll(None if is_running else GRACE_SECONDS * 1000)
            if not ready:
                return True
            for stream, _ in ready:
                if stream == process:
                    is_running = False
                elif data := os.read(stream, CHUNK):
                    receivers[stream](data)
                    continue
                else:
                    is_open.discard(stream)
                poll.unregister(stream)
        return False
    finally:
        os.close(process)
