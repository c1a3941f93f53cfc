"""A host in Python, over ctypes: isobaric heating of propane vapour.

Usage: properties.py path/to/libtessarel.so
"""

import ctypes
import sys

FIELD = 128


def text(value, length):
    """A blank-padded text field and its length, as the library takes it."""
    return ctypes.create_string_buffer(value.encode().ljust(length), length), ctypes.c_size_t(length)


class Fluid:
    """The fluid that the library holds selected."""

    def __init__(self, path, composition):
        self.library = ctypes.CDLL(path)
        self.n = len(composition)
        names = "".join(name.ljust(32) for name in composition)
        fields, _ = text(names, 32 * self.n)
        fractions = (ctypes.c_double * self.n)(*composition.values())
        err, err_length = text("", FIELD)
        self.library.tessarel_setfluid(
            ctypes.byref(ctypes.c_int32(self.n)), fields, fractions, err, ctypes.c_size_t(32), err_length)
        self._check(err)

    @staticmethod
    def _check(err):
        message = err.raw.decode().rstrip()
        if message != "No errors":
            raise RuntimeError(message)

    def state(self, spec, **given):
        """The state from a pair of molar SI values, for example state("TP Vph", t=300, p=1e5)."""
        keys = "t p v u h s q cv dpdt dpdv d2pdt2 d2pdv2 d2pdtdv dcvdt".split()
        values = {key: ctypes.c_double(given.get(key, 0.0)) for key in keys}
        lists = [(ctypes.c_double * self.n)() for _ in range(3)]
        spec_field, spec_length = text(spec, len(spec))
        err, err_length = text("", FIELD)
        self.library.tessarel_tmdprop(
            spec_field, ctypes.byref(ctypes.c_int32(1)), *(ctypes.byref(value) for value in values.values()),
            *lists, err, spec_length, err_length)
        self._check(err)
        return {key: value.value for key, value in values.items()}


def main():
    fluid = Fluid(sys.argv[1], {"propane": 1.0})
    print(f"{'T degC':>10} {'p bar':>10} {'v m3/kg':>12} {'h kJ/kg':>12} {'cv kJ/(kg K)':>14}")
    for t in range(300, 401, 20):
        a = fluid.state("TP Vph", t=t, p=5e5)
        print(f"{a['t']:10.2f} {a['p']:10.3f} {a['v']:12.6f} {a['h']:12.4f} {a['cv']:14.5f}")


if __name__ == "__main__":
    main()
