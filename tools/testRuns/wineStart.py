"""Starts a Windows program under Wine, and starts it again if Wine failed to.

The behaviour of Wine 8.0, measured with a program whose constructor fails and with a loader whose memory is occupied:

- Wine needs the page at 0x7ffe0000. If it is occupied, the loader exits with 1 before any code of the program runs. It
  prints "failed to map the shared user data: c0000018" on its debug channel err:virtual, which WINEDEBUG=-all disables:
  without that channel such a start is silent.
- Wine's start.exe starts a 32-bit program and retries once, so the message can precede the output of a program that
  runs. If the second try fails too, start.exe prints "ShellExecuteEx failed: ..." and exits with 1.
- A program that an exception ends exits with the low byte of its code (5 for 0xC0000005, 253 for 0xC00000FD), both in a
  static initialiser and later. Wine prints "wine: Unhandled page fault ..." and the report of the debugger, except
  after abort() (3), a fast failure (9), TerminateProcess, or an ExitProcess in a static initialiser.
- A program with a missing DLL exits with 53 (the low byte of 0xC0000135) without output.

So with the channel on, a failure of Wine is never silent, and silence comes from the program. A program is started
again only if one of the two messages and nothing else was written to either stream.
"""

from collections.abc import Callable

from testRuns.childOutput import Ended, run

ATTEMPTS = 3
DEBUG_CHANNELS = "-all,err+virtual"
FAILED_STARTS = (b"failed to map the shared user data", b"ShellExecuteEx failed")
START_PROGRAM = b"Application could not be started, or no application associated with the specified file."

# The usual cause of an exit code, by its low byte.
WINDOWS_CODES = {
    3: "abort()",
    5: "0xC0000005, access violation",
    9: "0xC0000409, fast failure",
    29: "0xC000001D, illegal instruction",
    53: "0xC0000135, a program or DLL is missing",
    57: "0xC0000139, a DLL lacks a function",
    66: "0xC0000142, a DLL failed to start",
    116: "0xC0000374, heap corruption",
    123: "0xC000007B, a DLL of another width",
    148: "0xC0000094, division by zero",
    253: "0xC00000FD, stack overflow",
}


def never_began(code: int, output: bytes, errors: bytes) -> bool:
    """Returns whether Wine failed to start the program: it reports that, and there is no other output."""
    written = (output + b"\n" + errors).splitlines()
    says_so = [line for line in written if any(message in line for message in FAILED_STARTS)]
    others = [line for line in written if line.strip() and line not in says_so and line.strip() != START_PROGRAM]
    return code != 0 and bool(says_so) and not others


def meaning(code: int) -> str:
    """Returns the exit code in words, with the Windows code that it can come from."""
    return f"exit code {code}" + (f" (under Wine that may be {WINDOWS_CODES[code]})" if code in WINDOWS_CODES else "")


def start(command: list[str], environment: dict[str, str], new_receiver: Callable[[], Callable[[bytes], None]],
          on_errors: Callable[[bytes], None], report: Callable[[str], None], starter: str) -> Ended:
    """Runs `starter` with the command, up to three times. Each start gets a new receiver for its output."""
    environment = {"WINEDEBUG": DEBUG_CHANNELS} | environment
    for attempt in range(1, ATTEMPTS + 1):
        output, errors = bytearray(), bytearray()
        receiver = new_receiver()

        def take_output(data: bytes) -> None:
            output.extend(data)
            receiver(data)

        def take_errors(data: bytes) -> None:
            errors.extend(data)
            on_errors(data)

        ended = run([starter, *command], environment, take_output, take_errors)
        if not never_began(ended.code, bytes(output), bytes(errors)):
            break
        report(f"start {attempt} of {command[0]} failed before the program began, exit code {ended.code}")
    if ended.code != 0:
        report(meaning(ended.code))
    if not output and not errors:
        report("the program was silent, and so was Wine: its own start-up ended it, or a DLL is missing")
    return ended
