"""Photo metadata through LumidexMgr.so or LumidexMgr.dll, on ctypes alone.

    module = lumidex.load("LumidexMgr.so")
    with module.open("photo.jpg") as photo:
        print(photo.pose().heading)

Values are copied out of the module; no value of this file points into it. A value that the
photograph does not have is None, a call that failed is a LumidexError. One object may be used by
several threads, whose calls on it wait for each other. Python 3.9 or later, 64-bit.
"""

from __future__ import annotations

import ctypes
import os
import struct
import threading
import uuid
import weakref
from ctypes import POINTER, c_double, c_float, c_int32, c_uint16, c_uint32, c_uint64, c_void_p
from dataclasses import dataclass
from enum import IntEnum
from fractions import Fraction
from typing import Any, Iterable, NamedTuple, Optional, Sequence, Union

__all__ = ["FileType", "Group", "LumidexError", "Module", "Photo", "Pose", "Rational", "Record",
           "RecordType", "ResultCode", "load"]

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


class ResultCode(IntEnum):
    """The result codes that a call can fail with, and what they mean."""

    meaning: str

    def __new__(cls, value: int, meaning: str) -> ResultCode:
        code = int.__new__(cls, value)
        code._value_, code.meaning = value, meaning
        return code

    LMD_E_SRC_NOT_FOUND = 0x8004C001, "the file does not exist or is not a regular file"
    LMD_E_DST_EXISTS = 0x8004C002, "the output exists and may not be overwritten"
    LMD_E_OPEN_FAILED = 0x8004C003, "the file could not be opened"
    LMD_E_READ_FAILED = 0x8004C004, "a read returned fewer bytes than asked"
    LMD_E_WRITE_FAILED = 0x8004C005, "a write wrote fewer bytes than asked"
    LMD_E_BUFFER_TOO_SMALL = 0x8004C011, "the buffer is too small for the value"
    LMD_E_INVALID_ARG = 0x8004C012, "a null argument, or no parse result to read from"
    LMD_E_OUT_OF_MEMORY = 0x8004C013, "an allocation failed inside a parse"
    LMD_E_XMP_FOUND = 0x8004C021, "an XMP packet is already present"
    LMD_E_BAD_FORMAT = 0x8004C022, "the file type is not supported here"
    LMD_E_TYPE_MISMATCH_16 = 0x8004C023, "record 16 has an unexpected value type"
    LMD_E_TYPE_MISMATCH_17 = 0x8004C024, "record 17 has an unexpected value type"
    LMD_E_NOT_FOUND = 0x8004C025, "the value is not present"
    LMD_E_NOT_PANORAMA = 0x8004C026, "XMP is present but carries no projection type"
    LMD_E_TYPE_MISMATCH_18 = 0x8004C027, "record 18 has an unexpected value type"
    LMD_E_TYPE_MISMATCH_19 = 0x8004C028, "record 19 has an unexpected value type"
    LMD_E_HAS_EXIF = 0x8004C029, "an EXIF segment is already present"
    LMD_E_TYPE_MISMATCH_21 = 0x8004C031, "record 21 has an unexpected value type"
    LMD_E_ALREADY_MARKED = 0x8004C032, "the file already ends with the trailer block"
    LMD_E_TYPE_MISMATCH_20 = 0x8004C033, "record 20 has an unexpected value type"

    E_NOTIMPL = 0x80004001, "not implemented"
    E_NOINTERFACE = 0x80004002, "the object has no such interface"
    E_POINTER = 0x80004003, "a null pointer"
    E_FAIL = 0x80004005, "the operation failed"
    E_UNEXPECTED = 0x8000FFFF, "an unexpected failure"
    CLASS_E_CLASSNOTAVAILABLE = 0x80040111, "the module does not have the class"
    E_OUTOFMEMORY = 0x8007000E, "out of memory"


class LumidexError(Exception):
    """A call that failed: "operation: NAME (0x8004C001): meaning"."""

    def __init__(self, operation: str, code: int) -> None:
        super().__init__(operation, code)
        self.operation, self.code = operation, code
        known = [result for result in ResultCode if result == code]
        self.name = known[0].name if known else "HRESULT"
        self.meaning = known[0].meaning if known else "a result code of the system"

    def __str__(self) -> str:
        return f"{self.operation}: {self.name} (0x{self.code:08X}): {self.meaning}"


class FileType(IntEnum):
    """What the first 8 bytes of a file say."""

    UNKNOWN, JPEG, TIFF, PNG = 0, 1, 2, 5


class Group(IntEnum):
    """Where a record comes from. The parse hands out BASICS, IFD0, EXIF and GPS."""

    BASICS, IFD0, EXIF, GPS = 0x001, 0x002, 0x004, 0x008
    IPTC, DATES, XMP, MAKERNOTE_SUMMARY = 0x010, 0x020, 0x040, 0x080
    IFD1, MAKERNOTE, ICC = 0x200, 0x400, 0x800


class RecordType(IntEnum):
    """The type of a record's value; the rationals have two numbers of 32 bits."""

    INT32, SRATIONAL, DOUBLE, ASCII, WIDE_TEXT, BYTES = 1, 2, 3, 4, 5, 6
    UINT32, URATIONAL = 0x1001, 0x1002


class Rational(NamedTuple):
    """An exact fraction as a file has it: not reduced, and the denominator may be 0."""

    numerator: int
    denominator: int

    def fraction(self) -> Fraction:
        """The number, reduced; ZeroDivisionError when the denominator is 0."""
        return Fraction(self.numerator, self.denominator)


class Pose(NamedTuple):
    """Degrees, each when the file has it."""

    heading: Optional[float]
    pitch: Optional[float]
    roll: Optional[float]


Value = Union[str, bytes, tuple[int, ...], tuple[Rational, ...], tuple[float, ...]]
Given = Union[str, bytes, int, Rational, Fraction, Sequence[int],
              Sequence[Union[Rational, Fraction]]]

_NUMBERS: dict[int, str] = {RecordType.INT32: "i", RecordType.UINT32: "I", RecordType.DOUBLE: "d"}
_RATIONALS: dict[int, str] = {RecordType.SRATIONAL: "i", RecordType.URATIONAL: "I"}
_UTF16 = "utf-16-le"  # as all numbers: no machine that the module is built for is big-endian


def _numbers_of(code: str, data: bytes) -> tuple[Any, ...]:
    return struct.unpack_from(f"<{len(data) // struct.calcsize(code)}{code}", data)


def _rationals_of(code: str, data: bytes) -> tuple[Rational, ...]:
    numbers = _numbers_of(code, data)
    return tuple(map(Rational, numbers[0::2], numbers[1::2]))


@dataclass(frozen=True)
class Record:
    """One metadata value, in the bytes in which the module hands it out and takes it.

    `id` is the tag, or an identifier of the module's own; `type` one of RecordType, or a number
    that is none, whose value is bytes. `Record.of` makes a record from a Python value.
    """

    group: int
    id: int
    type: int
    data: bytes

    @property
    def value(self) -> Value:
        """The value by its type.

        Numbers and fractions are a tuple; a rest that is no whole item is left out. A text goes to
        its first zero: `data` has what may stand behind it. The encoding of an ASCII text is not
        stated in a file: it is read as UTF-8, and other bytes become lone surrogates
        ("surrogateescape"), so that `Record.of` gives the same bytes.
        """
        if self.type == RecordType.ASCII:
            return self.data.partition(b"\0")[0].decode("utf-8", "surrogateescape")
        if self.type == RecordType.WIDE_TEXT:
            whole = self.data[:len(self.data) // 2 * 2]
            return whole.decode(_UTF16, "surrogatepass").partition("\0")[0]
        if self.type in _RATIONALS:
            return _rationals_of(_RATIONALS[self.type], self.data)
        if self.type in _NUMBERS:
            return _numbers_of(_NUMBERS[self.type], self.data)
        return self.data

    @classmethod
    def of(cls, group: int, id: int, value: Given) -> Record:
        """A record for writing.

        A text becomes UTF-8 with its final zero, bytes stay bytes; integers take 32 bits each,
        fractions (Rational or Fraction) two times 32. A number or a fraction may be alone or in a
        sequence. ValueError for a number that does not fit, TypeError for a value of another kind:
        a float too, which is no exact fraction.
        """
        if isinstance(value, str):
            text = value.encode("utf-8", "surrogateescape") + b"\0"
            return cls(group, id, RecordType.ASCII, text)
        if isinstance(value, (bytes, bytearray, memoryview)):
            return cls(group, id, RecordType.BYTES, bytes(value))
        items: Any = (value,) if isinstance(value, (int, Rational, Fraction)) else tuple(value)
        if items and all(isinstance(item, (Rational, Fraction)) for item in items):
            numbers = [part for item in items for part in (item.numerator, item.denominator)]
            kinds = RecordType.URATIONAL, RecordType.SRATIONAL
        elif items and all(isinstance(item, int) for item in items):
            numbers = items
            kinds = RecordType.UINT32, RecordType.INT32
        else:
            raise TypeError(f"no integers, fractions, text or bytes: {value!r}")
        signed = min(numbers) < 0
        try:
            data = struct.pack(f"<{len(numbers)}{'i' if signed else 'I'}", *numbers)
        except struct.error as error:
            raise ValueError(f"more than 32 bits: {value!r}") from error
        return cls(group, id, kinds[signed], data)


# The binary interface. A method is called by its slot in the table that an object begins with.
# 64-bit Windows has one calling convention, which is CFUNCTYPE's too.

class _RawRecord(ctypes.Structure):
    _fields_ = [("group", c_uint32), ("id", c_uint32), ("type", c_uint32),
                ("size", c_uint32), ("data", c_void_p), ("number", c_double)]


class _RecordList(ctypes.Structure):
    _fields_ = [("table", c_void_p), ("state", c_uint32),
                ("records", POINTER(_RawRecord)), ("count", c_int32)]


_Guid = ctypes.c_uint8 * 16
_CLSID_LUMIDEX, _IID_LUMIDEX, _IID_CLASS_FACTORY = (_Guid(*uuid.UUID(text).bytes_le) for text in (
    "9652D740-CF49-448C-A53F-76EC91FDCA16", "E998C207-72DD-4BA3-AD62-7DD14DDA8293",
    "00000001-0000-0000-C000-000000000046"))

_Text = POINTER(c_uint16)  # zero-terminated UTF-16
_Uint, _Float, _Double = POINTER(c_uint32), POINTER(c_float), POINTER(c_double)
_Out, _Iid = POINTER(c_void_p), POINTER(_Guid)
_ABSENT = {ResultCode.LMD_E_NOT_FOUND, ResultCode.LMD_E_NOT_PANORAMA,
           ResultCode.LMD_E_INVALID_ARG}  # the last: a PNG has no parse result


def _method(slot: int, *arguments: Any, result: Any = c_uint32) -> tuple[int, Any]:
    return slot, ctypes.CFUNCTYPE(result, c_void_p, *arguments)


_RELEASE = _method(2)
_CREATE_INSTANCE = _method(3, c_void_p, _Iid, _Out)
_GET_INFO_LIST = _method(4, result=POINTER(_RecordList))
_METHODS = {name: _method(slot, *arguments) for slot, (name, *arguments) in enumerate((
    ("GetFileType", _Text), ("Open", _Text),
    ("GetInfo16", _Uint), ("GetInfo17Size", _Uint), ("GetInfo17Triple", _Double, _Double, _Double),
    ("GetInfo17Data", _Uint, c_void_p), ("EmbedXmpFile", _Text, _Text, _Text),
    ("IsPanorama", _Uint), ("AppendTrailer", _Text),
    ("GetInfo18Size", _Uint), ("GetInfo18Data", _Uint, c_void_p),
    ("GetInfo19Size", _Uint), ("GetInfo19Data", _Uint, c_void_p),
    ("WriteMetadata", _Text, _Text, c_uint32, POINTER(_RawRecord), c_uint32, c_uint64, _Text,
     c_uint32),
    ("GetXmpPacketSize", _Uint), ("GetXmpPacket", _Uint, c_void_p),
    ("GetPoseHeading", _Float), ("GetPosePitch", _Float), ("GetPoseRoll", _Float),
    ("ParseBasic", _Text, _Out), ("GetInfo21Size", _Uint), ("GetInfo21Data", _Uint, c_void_p),
    ("GetInfo20Triple", _Uint, _Uint, _Uint),
), 3)}


def _text_of(path: Path) -> Any:
    """A path in the form in which the module takes it, as an array that owns the characters."""
    text = os.fsdecode(path)
    if "\0" in text:
        raise ValueError("a zero in a path")
    # Names of Windows may have halves of a pair; elsewhere a name that is no UTF-8 is refused.
    data = text.encode(_UTF16, "surrogatepass" if os.name == "nt" else "strict") + b"\0\0"
    return (c_uint16 * (len(data) // 2)).from_buffer_copy(data)


def _require(operation: str, result: int) -> None:
    if result >= 0x80000000:
        raise LumidexError(operation, result)


def _call(address: c_void_p, method: tuple[int, Any], *arguments: Any) -> Any:
    slot, prototype = method
    table = ctypes.cast(address, POINTER(POINTER(c_void_p)))[0]
    return prototype(table[slot])(address, *arguments)


class _Object:
    """One reference to an object of the module, released by close or with this Python object.

    It is in the hands of one thread at a time. The module is there: ctypes never unloads a library.
    """

    def __init__(self, address: c_void_p) -> None:
        self.lock = threading.RLock()
        self._address = address
        self._finalizer = weakref.finalize(self, _call, address, _RELEASE)

    def call(self, method: tuple[int, Any], *arguments: Any) -> Any:
        with self.lock:
            if not self._finalizer.alive:
                raise ValueError("the photograph is closed")
            return _call(self._address, method, *arguments)

    def require(self, name: str, *arguments: Any) -> None:
        _require(name, self.call(_METHODS[name], *arguments))

    def has(self, name: str, *arguments: Any) -> bool:
        """Whether a value is there; an error when it cannot be told."""
        result = self.call(_METHODS[name], *arguments)
        if result in _ABSENT:
            return False
        _require(name, result)
        return True

    def close(self) -> None:
        with self.lock:
            self._finalizer()


class Photo:
    """A JPEG or PNG that was opened, by Module.open.

    Its values are those of that moment, but for the panorama mark, the packet and the records, for
    which the file is read again. Close it, use it in a `with`, or let it go.
    """

    def __init__(self, object: _Object, path: Path) -> None:
        text = _text_of(path)
        object.require("Open", text)
        self._object = object
        self.path = os.fsdecode(path)
        self.type = FileType(object.call(_METHODS["GetFileType"], text))

    def __enter__(self) -> Photo:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Lets go of the object; every later call is a ValueError but this one."""
        self._object.close()

    def is_panorama(self) -> bool:
        """Whether the file is marked as a panorama by its XMP."""
        flag = c_uint32()
        return self._object.has("IsPanorama", flag) and flag.value != 0

    def pose(self) -> Pose:
        """The angles of a panorama."""
        return Pose(*(self._number(name, c_float())
                      for name in ("GetPoseHeading", "GetPosePitch", "GetPoseRoll")))

    def info16(self) -> Optional[int]:
        """Maker-note tag 0x0010; the further ones follow by their numbers in the interface."""
        return self._number("GetInfo16", c_uint32())

    def info17(self) -> Optional[tuple[Rational, ...]]:
        data = self._data("GetInfo17")
        return None if data is None else _rationals_of("i", data)

    def info17_triple(self) -> Optional[tuple[float, float, float]]:
        """Three quotients. E_FAIL when a denominator is 0; info17 has that value as well."""
        return self._triple("GetInfo17Triple", c_double(), c_double(), c_double())

    def info18(self) -> Optional[bytes]:
        return self._data("GetInfo18")

    def info19(self) -> Optional[bytes]:
        return self._data("GetInfo19")

    def info20(self) -> Optional[tuple[int, int, int]]:
        return self._triple("GetInfo20Triple", c_uint32(), c_uint32(), c_uint32())

    def info21(self) -> Optional[bytes]:
        return self._data("GetInfo21")

    def records(self) -> tuple[Record, ...]:
        """The records of the groups BASICS, IFD0, EXIF and GPS; none for a PNG."""
        address = c_void_p()
        result = self._object.call(_METHODS["ParseBasic"], _text_of(self.path), address)
        info = _Object(address) if address else None
        try:
            _require("ParseBasic", result)
            return _records_of(info.call(_GET_INFO_LIST)) if info else ()
        finally:
            if info:
                info.close()

    def xmp_packet(self) -> Optional[bytes]:
        """The XMP packet where the module puts one, byte for byte."""
        with self._object.lock:  # the size that the module goes by is the last one it told
            while True:
                size = c_uint32()
                if not self._object.has("GetXmpPacketSize", size):
                    return None
                # A damaged file may tell of more than it has.
                if size.value > os.path.getsize(self.path):
                    raise LumidexError("GetXmpPacket", ResultCode.LMD_E_READ_FAILED)
                buffer = ctypes.create_string_buffer(size.value + 1)  # no more is ever written
                result = self._object.call(_METHODS["GetXmpPacket"], size, buffer)
                if result != ResultCode.LMD_E_BUFFER_TOO_SMALL:  # else it has grown since
                    break
        _require("GetXmpPacket", result)
        # For a JPEG the module tells 2 more than the packet has.
        return buffer.raw[:size.value - 2 * (self.type == FileType.JPEG)]

    def _number(self, name: str, value: Any) -> Optional[Any]:
        return value.value if self._object.has(name, value) else None

    def _triple(self, name: str, *values: Any) -> Optional[tuple[Any, Any, Any]]:
        if not self._object.has(name, *values):
            return None
        return values[0].value, values[1].value, values[2].value

    def _data(self, name: str) -> Optional[bytes]:
        size = c_uint32()
        with self._object.lock:
            if not self._object.has(name + "Size", size):
                return None
            buffer = ctypes.create_string_buffer(size.value + 1)
            if not self._object.has(name + "Data", size, buffer):
                return None
        return buffer.raw[:size.value]


def _records_of(found: Any) -> tuple[Record, ...]:
    if not found or not found.contents.records:
        return ()
    raw = found.contents.records[:max(found.contents.count, 0)]
    return tuple(Record(each.group, each.id, each.type,
                        ctypes.string_at(each.data, each.size) if each.data else b"")
                 for each in raw)


class Module:
    """The loaded module, by `load`. It may be used on any thread and stays loaded."""

    def __init__(self, library: ctypes.CDLL) -> None:
        self._library = library

    def open(self, path: Path) -> Photo:
        return Photo(self._create(), path)

    def file_type(self, path: Path) -> FileType:
        return FileType(self._create().call(_METHODS["GetFileType"], _text_of(path)))

    def write_metadata(self, source: Path, target: Path, records: Iterable[Record] = (), *,
                       thumbnail: bytes = b"", xmp_file: Optional[Path] = None,
                       overwrite: bool = False) -> None:
        """Writes a copy of a JPEG with a new EXIF segment from records, an XMP packet, or both.

        A thumbnail is a whole JPEG stream. What the module does not write is dropped without a
        message; the source's own EXIF segment stays behind the new one. With overwrite the target
        may exist and the source may have an EXIF segment.
        """
        given = tuple(records)
        buffers = [ctypes.create_string_buffer(record.data) for record in given]  # until it is over
        raw = (_RawRecord * len(given))(*[
            _RawRecord(record.group, record.id, record.type, len(record.data),
                       ctypes.addressof(buffer)) for record, buffer in zip(given, buffers)])
        picture = ctypes.create_string_buffer(thumbnail)
        self._create().require(
            "WriteMetadata", _text_of(source), _text_of(target), len(given), raw if given else None,
            len(thumbnail), ctypes.addressof(picture),
            None if xmp_file is None else _text_of(xmp_file), int(overwrite))

    def embed_xmp(self, source: Path, target: Path, xmp_file: Path) -> None:
        """Writes a copy of a JPEG or PNG with the packet of a file. A PNG whose target is named by
        the very text that names the source gets it in place."""
        self._create().require("EmbedXmpFile", _text_of(source), _text_of(target),
                               _text_of(xmp_file))

    def append_trailer(self, path: Path) -> None:
        """Appends the fixed 64-byte trailer block to a file."""
        self._create().require("AppendTrailer", _text_of(path))

    def can_unload(self) -> bool:
        """Whether no object of the module lives, as a photograph does until it is closed."""
        return bool(self._library.DllCanUnloadNow() == 0)

    def _create(self) -> _Object:
        address = c_void_p()
        _require("DllGetClassObject", self._library.DllGetClassObject(
            _CLSID_LUMIDEX, _IID_CLASS_FACTORY, address))
        factory = _Object(address)
        created = c_void_p()
        try:
            _require("CreateInstance", factory.call(_CREATE_INSTANCE, None, _IID_LUMIDEX, created))
        finally:
            factory.close()
        return _Object(created)


def load(path: Path) -> Module:
    """The module of a file; OSError when it cannot be loaded or is another. A relative path counts
    from the current folder."""
    if ctypes.sizeof(c_void_p) != 8:
        raise OSError("the module is for 64-bit programs")
    whole = os.path.abspath(os.fsdecode(path))
    library = ctypes.CDLL(whole)
    try:
        library.DllGetClassObject.argtypes = [_Iid, _Iid, _Out]
        library.DllGetClassObject.restype = c_uint32
        library.DllCanUnloadNow.argtypes = []
    except AttributeError as error:
        raise OSError(f"{whole} is no LumidexMgr: {error}") from error
    return Module(library)
