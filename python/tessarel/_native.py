"""The shared library over ctypes: its texts, its errors and its sessions."""

from __future__ import annotations

import ctypes
import os
import pathlib
import threading

HERE = pathlib.Path(__file__).resolve().parent
LIBRARY = pathlib.Path(os.environ.get("TESSAREL_LIBRARY", HERE / "native" / "lib" / "libtessarel.so")).resolve()
#: Where the library reads fluids: beside itself, or where the environment says.
FLUID_DIRECTORY = pathlib.Path(os.environ.get("TESSAREL_DATA") or LIBRARY.parent.parent) / "fluids"

#: What stands in an output that has not been computed.
NOT_COMPUTED = -8888.8
#: The gas constant of the library [J/(mol K)], that of the parameters' publications, not today's 8.314462618.
GAS_CONSTANT = 8.31441
NAME_FIELD = 128
ERROR_FIELD = 300

library = ctypes.CDLL(str(LIBRARY))
_ERROR_LENGTH = ctypes.c_size_t(ERROR_FIELD)


class Error(RuntimeError):
    """A calculation or a selection that the library refused or did not solve, with its text and what was asked."""


def text(value: str, length: int | None = None) -> tuple[ctypes.Array, ctypes.c_size_t]:
    """A text as a blank-padded field, and the length that goes with it."""
    raw = value.encode("utf-8", "replace")
    length = max(1, len(raw)) if length is None else length
    return ctypes.create_string_buffer(raw.ljust(length)[:length], length), ctypes.c_size_t(length)


class Message:
    """The text in which a call reports; the two last arguments of nearly every entry."""

    def __init__(self) -> None:
        self.field = ctypes.create_string_buffer(ERROR_FIELD)
        self.length = _ERROR_LENGTH

    @property
    def good(self) -> bool:
        return self.field.raw.startswith(b"No errors")

    def __str__(self) -> str:
        return self.field.raw.decode("utf-8", "replace").strip(" \0")

    def check(self, asked: str) -> None:
        if not self.good:
            raise Error(f"{self} [{asked}]")


def entry(name: str, *arguments, asked: str, lengths: tuple = ()) -> None:
    """Calls tessarel_<name>(arguments, err, lengths of texts, length of err); raises Error unless it succeeds."""
    message = Message()
    getattr(library, "tessarel_" + name)(*arguments, message.field, *lengths, message.length)
    message.check(asked)


def integer(value: int):
    return ctypes.byref(ctypes.c_int32(value))


def number(value: float):
    return ctypes.byref(ctypes.c_double(value))


def doubles(count: int, values=()) -> ctypes.Array:
    return (ctypes.c_double * count)(*values)


_use, _current = library.tessarel_session_use, library.tessarel_session_current


class Session:
    """A session of the library: `with session:` makes it current on this thread, and the one before it afterwards.

    So another user of the library in this process finds its own session as it left it. The lock lets one thread at a
    time in; threads that are to work at once take a clone each.
    """

    def __init__(self, clone_of: Session | None = None) -> None:
        number_ = ctypes.c_int64(-1)
        if clone_of is None:
            entry("session_new", ctypes.byref(number_), asked="a new session")
        else:
            entry("session_clone", ctypes.byref(clone_of._number), ctypes.byref(number_), asked="a clone of a session")
        self._number = number_
        self._reference = ctypes.byref(number_)
        self._lock = threading.RLock()
        self._depth = 0
        self._before = ctypes.c_int64(0)
        self._before_reference = ctypes.byref(self._before)
        self._message = Message()

    def __enter__(self) -> Session:
        self._lock.acquire()
        self._depth += 1
        if self._depth == 1:
            _current(self._before_reference)
            _use(self._reference, self._message.field, _ERROR_LENGTH)
            if not self._message.field.raw.startswith(b"No errors"):
                self._depth = 0
                self._lock.release()
                raise Error(f"{self._message} [session {self._number.value}]")
        return self

    def __exit__(self, *_) -> None:
        self._depth -= 1
        if self._depth == 0:
            _use(self._before_reference, self._message.field, _ERROR_LENGTH)
        self._lock.release()

    def close(self) -> None:
        """Frees the session; nothing happens when it is free already."""
        if self._number.value > 0:
            message = Message()
            library.tessarel_session_free(self._reference, message.field, _ERROR_LENGTH)
            self._number.value = -1

    def __del__(self) -> None:
        if getattr(self, "_number", None) is not None and library is not None:
            self.close()
