#!/usr/bin/env python3
"""Looks at the programs and libraries of a folder that is made for Windows.

    check_folder.py FOLDER WINDOWS_LIBRARIES

Every library that one of them asks for must lie in the folder or among those that Windows has
(WINDOWS_LIBRARIES: a folder with one file for each, such as Wine's). mapwright.exe must have an icon in
several sizes, a version and a manifest. Says what it found; exits with 1 if something is missing.
"""
import pathlib
import struct
import sys

ICON, GROUP_ICON, VERSION, MANIFEST = 3, 14, 16, 24


class Program:
    """A file in Windows' format for programs, read as far as its imports and resources."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        header = self.u32(0x3C)
        if self.bytes[:2] != b"MZ" or self.bytes[header:header + 4] != b"PE\0\0":
            raise ValueError(f"{path} is no program for Windows")
        sections, options = self.u16(header + 6), self.u16(header + 20)
        optional = header + 24
        if self.u16(optional) != 0x20B or self.u16(header + 4) != 0x8664:
            raise ValueError(f"{path} is not for 64-bit Windows")
        self.directories = optional + 112
        self.sections = []
        for i in range(sections):
            at = optional + options + 40 * i
            size, start, length, offset = struct.unpack_from("<4I", self.bytes, at + 8)
            self.sections.append((start, max(size, length), offset))

    def u16(self, at):
        return struct.unpack_from("<H", self.bytes, at)[0]

    def u32(self, at):
        return struct.unpack_from("<I", self.bytes, at)[0]

    def place(self, address):
        """Where in the file an address of the running program comes from."""
        for start, size, offset in self.sections:
            if start <= address < start + size:
                return address - start + offset
        raise ValueError(f"no section holds {address:#x}")

    def directory(self, number):
        return self.u32(self.directories + 8 * number)

    def text(self, address):
        at = self.place(address)
        return self.bytes[at:self.bytes.index(b"\0", at)].decode()

    def imports(self):
        names = []
        for number, size, name in ((1, 20, 12), (13, 32, 4)):  # at the start, and when first called
            if not self.directory(number):
                continue
            at = self.place(self.directory(number))
            while self.u32(at + name):
                names.append(self.text(self.u32(at + name)))
                at += size
        return names

    def resources(self):
        """Kind and id of each resource, with its bytes."""
        if not self.directory(2):
            return {}
        base = self.place(self.directory(2))

        def entries(at):
            for i in range(self.u16(base + at + 12) + self.u16(base + at + 14)):
                name, to = struct.unpack_from("<2I", self.bytes, base + at + 16 + 8 * i)
                yield name, to & 0x7FFFFFFF

        found = {}
        for kind, ids in entries(0):
            for name, languages in entries(ids):
                for _, leaf in entries(languages):
                    address, size = struct.unpack_from("<2I", self.bytes, base + leaf)
                    start = self.place(address)
                    found[kind, name] = self.bytes[start:start + size]
        return found


def icon_sizes(resources):
    """The sides in pixels of the icon's pictures; each must be there with as many bytes as announced."""
    sizes = []
    for (kind, _), group in resources.items():
        if kind != GROUP_ICON:
            continue
        for i in range(struct.unpack_from("<H", group, 4)[0]):
            entry = struct.unpack_from("<4B2HIH", group, 6 + 14 * i)
            picture = resources.get((ICON, entry[7]), b"")
            if len(picture) == entry[6]:
                sizes.append(entry[0] or 256)
    return sorted(sizes)


def version_texts(resources):
    """The named texts of the version, such as ProductName."""
    texts = {}
    for (kind, _), version in resources.items():
        words = version.decode("utf-16-le", "replace").split("\0") if kind == VERSION else []
        words = [word for word in words if word]
        for i, word in enumerate(words[:-1]):
            for name in ("ProductName", "ProductVersion", "FileDescription", "OriginalFilename"):
                if word.endswith(name):
                    texts[name] = words[i + 1]
    return texts


def main(folder, windows):
    folder = pathlib.Path(folder)
    of_windows = {file.name.lower() for file in pathlib.Path(windows).iterdir()}
    own = {file.name.lower() for file in folder.iterdir()}
    faults = []
    for file in sorted(folder.rglob("*")):
        if file.suffix not in (".exe", ".dll", ".mwp"):
            continue
        program = Program(file)
        for name in program.imports():
            # Sets of calls are names that Windows itself finds a library for.
            if name.lower() not in own | of_windows and not name.lower().startswith("api-ms-win-"):
                faults.append(f"{file.name} asks for {name}, which is not there")
        if file.name == "mapwright.exe":
            resources = program.resources()
            sizes, texts = icon_sizes(resources), version_texts(resources)
            print(f"mapwright.exe: icon of {' '.join(map(str, sizes))} pixels, "
                  f"{texts.get('FileDescription')}, {texts.get('ProductName')} "
                  f"{texts.get('ProductVersion')}")
            if len(sizes) < 4 or not {16, 32, 48, 256} <= set(sizes):
                faults.append("mapwright.exe's icon has not all sizes")
            if "ProductVersion" not in texts or "ProductName" not in texts:
                faults.append("mapwright.exe has no version")
            if not any(kind == MANIFEST for kind, _ in resources):
                faults.append("mapwright.exe has no manifest")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
