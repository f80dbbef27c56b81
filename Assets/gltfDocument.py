"""Builds glTF 2 documents: one buffer, accessors appended in order, written as .glb or as .gltf with embedded data."""

import base64
import json
import struct

UNSIGNED_BYTE, UNSIGNED_SHORT, FLOAT = 5121, 5123, 5126
ARRAY_BUFFER, ELEMENT_ARRAY_BUFFER = 34962, 34963
POINTS, LINES, LINE_LOOP, LINE_STRIP = 0, 1, 2, 3

_CODES = {UNSIGNED_BYTE: "B", UNSIGNED_SHORT: "H", FLOAT: "f"}
_TYPES = {1: "SCALAR", 2: "VEC2", 3: "VEC3", 4: "VEC4", 16: "MAT4"}


class GltfDocument:
    """Indices are handed out in the order of the calls; `json` may be edited freely until the document is written."""

    def __init__(self, generator):
        self.json = {"asset": {"version": "2.0", "generator": generator}}
        self._data = bytearray()

    def add(self, kind, **content):
        """Appends `content` to the top-level array `kind` and returns its index."""
        entries = self.json.setdefault(kind, [])
        entries.append(content)
        return len(entries) - 1

    def node(self, name, **content):
        return self.add("nodes", name=name, **content)

    def scene(self, roots):
        self.json["scene"] = self.add("scenes", nodes=roots)

    def view(self, data, target=None):
        self._data += bytes(-len(self._data) % 4)
        content = {"buffer": 0, "byteOffset": len(self._data), "byteLength": len(data)}
        if target is not None:
            content["target"] = target
        self._data += data
        return self.add("bufferViews", **content)

    def accessor(self, rows, component=FLOAT, target=None, normalized=False, bounds=False):
        """`rows` holds numbers, or tuples of 2, 3, 4 or 16 (a matrix by columns) numbers."""
        rows = [row if isinstance(row, tuple) else (row,) for row in rows]
        width = len(rows[0])
        layout = struct.Struct("<%d%s" % (width, _CODES[component]))
        data = b"".join(layout.pack(*row) for row in rows)
        content = {"bufferView": self.view(data, target), "componentType": component,
                   "count": len(rows), "type": _TYPES[width]}
        if normalized:
            content["normalized"] = True
        if bounds:
            stored = list(zip(*layout.iter_unpack(data)))
            content["min"] = [min(column) for column in stored]
            content["max"] = [max(column) for column in stored]
        return self.add("accessors", **content)

    def positions(self, rows):
        return self.accessor(rows, target=ARRAY_BUFFER, bounds=True)

    def attribute(self, rows, component=FLOAT, normalized=False):
        return self.accessor(rows, component, ARRAY_BUFFER, normalized)

    def indices(self, values):
        return self.accessor(values, UNSIGNED_SHORT, ELEMENT_ARRAY_BUFFER)

    def animation(self, name, tracks):
        """`tracks`: (node, path, times, values[, interpolation]); tracks with equal times share one accessor."""
        inputs, samplers, channels = {}, [], []
        for node, path, times, values, *interpolation in tracks:
            times = tuple(times)
            if times not in inputs:
                inputs[times] = self.accessor(times, bounds=True)
            channels.append({"sampler": len(samplers), "target": {"node": node, "path": path}})
            samplers.append({"input": inputs[times], "output": self.accessor(values),
                             "interpolation": interpolation[0] if interpolation else "LINEAR"})
        return self.add("animations", name=name, samplers=samplers, channels=channels)

    def write_binary(self, path):
        self.json["buffers"] = [{"byteLength": len(self._data)}]
        text = json.dumps(self.json, separators=(",", ":")).encode()
        text += b" " * (-len(text) % 4)
        data = bytes(self._data) + bytes(-len(self._data) % 4)
        with open(path, "wb") as file:
            file.write(struct.pack("<4sII", b"glTF", 2, 28 + len(text) + len(data)))
            file.write(struct.pack("<I4s", len(text), b"JSON") + text)
            file.write(struct.pack("<I4s", len(data), b"BIN\0") + data)

    def write_embedded(self, path):
        uri = "data:application/octet-stream;base64," + base64.b64encode(self._data).decode()
        self.json["buffers"] = [{"byteLength": len(self._data), "uri": uri}]
        with open(path, "w", encoding="utf-8", newline="\n") as file:
            json.dump(self.json, file, indent=1)
            file.write("\n")
