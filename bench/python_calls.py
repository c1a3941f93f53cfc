#!/usr/bin/env python3
"""What the Python package adds to a state: single calls and arrays against one call of tessarel_states, in us."""

import ctypes
import time

import numpy as np

import tessarel
from tessarel._native import Message, library

COUNT = 2000
CASES = [
    ("propane, vapour", ["propane"], [1.0], 300.0, 1e5),
    ("methane/ethane/propane, vapour", ["methane", "ethane", "propane"], [0.85, 0.1, 0.05], 250.0, 40e5),
    ("methane/ethane/propane, two phases", ["methane", "ethane", "propane"], [0.85, 0.1, 0.05], 210.0, 20e5),
]


def c_call(fluid, t, p):
    """One call of the C entry for all states, into arrays made beforehand."""
    values, codes = np.empty((22, COUNT)), np.empty(COUNT, np.int32)
    x, y = np.empty((COUNT, fluid.n)), np.empty((COUNT, fluid.n))
    texts, message = ctypes.create_string_buffer(300), Message()
    address = lambda array: ctypes.c_void_p(array.ctypes.data)

    def call():
        with fluid._session:
            library.tessarel_states(
                b"TP",
                ctypes.byref(ctypes.c_int64(COUNT)),
                address(t),
                address(p),
                address(values),
                address(values[7:]),
                address(values[11:]),
                address(values[15:]),
                address(x),
                address(y),
                address(codes),
                ctypes.byref(ctypes.c_int32(1)),
                texts,
                message.field,
                ctypes.c_size_t(2),
                ctypes.c_size_t(300),
                message.length,
            )

    return call


def main():
    print("| states by T and P | C | array, 1 thread | array / C | single call | single call - C |")
    print("|---|---:|---:|---:|---:|---:|")
    for name, names, z, t, p in CASES:
        fluid = tessarel.Fluid(names, z)
        ts, ps = np.full(COUNT, t), np.full(COUNT, p)

        def single():
            for _ in range(COUNT // 4):
                fluid.state(T=t, P=p)

        runs = [
            (c_call(fluid, ts, ps), COUNT),
            (lambda: fluid.states(T=ts, P=ps, threads=1), COUNT),
            (single, COUNT // 4),
        ]
        best = [np.inf] * len(runs)
        for _ in range(40):  # in turn; time of the processor, so that other load counts little
            for k, (run, count) in enumerate(runs):
                start = time.thread_time()
                run()
                best[k] = min(best[k], (time.thread_time() - start) / count * 1e6)
        c, array, one = best
        print(f"| {name} | {c:.2f} | {array:.2f} | {array / c:.2f} | {one:.2f} | {one - c:.2f} |")


if __name__ == "__main__":
    main()
