#!/usr/bin/env python3
"""Saturation of pure fluids at the low end and next to the critical point, in 40-digit arithmetic.

Usage: saturation_critical.py BUILD > saturation_critical.csv, with mpmath. The formulas are those of Gross & Sadowski
2001 and 2002, Gross 2005, Gross & Vrabec 2006, written again here; derivatives are numerical. The built library gives
the temperatures (fractions of its tc, as doubles) and the starts of the root finder, nothing else.
"""
import pathlib
import sys

import mpmath as mp

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "tools"))
from make_accuracy_tables import Library  # noqa: E402

mp.mp.dps = 60  # 40 digits and what the numerical derivatives take
FLUIDS = ["argon", "methane", "propane", "n-decane", "benzene q", "carbon dioxide", "nitrogen", "acetone",
          "dimethyl ether", "methanol", "ethanol", "water", "monoethanolamine", "hydrogen sulfide"]
KA = mp.mpf("13806622.169047227")
AVOGADRO = mp.mpf("6.022045e-7")
PI = mp.mpf("3.14159265359")


def table(text):
    return [[mp.mpf(v) for v in row.split()] for row in text.strip().split("\n")]


AP = table("""0.91056314451539 -0.3084016918272 -0.09061483509767
0.63612814494991 0.18605311591713 0.4527842806392
2.68613478913903 -2.50300472586548 0.59627007280101
-26.5473624914884 21.4197936296668 -1.72418291311787
97.7592087835073 -65.2558853303492 -4.13021125311661
-159.5915408656 83.3186804808856 13.7766318697211
91.2977740839123 -33.7469229297323 -8.67284703679646""")
BP = table("""0.72409469413165 -0.5755498075345 0.09768831158356
2.2382791860938 0.69950955214436 -0.255757498161
-4.00258494846342 3.89256733895307 -9.15585615297321
-21.00357681484648 -17.21547164777212 20.64207597439724
26.8556413626615 192.6722644652495 -38.80443005206285
206.5513384066188 -161.8264616487648 93.6267740770146
-355.6023561220795 -165.2076934555607 -29.66690558514725""")
DIPOLE = [table("""0.30435038064 0.95346405973 -1.16100802773
-0.13585877707 -1.8396383192 4.5258606732
1.44933285154 2.0131180118 0.97512223853
0.35569769252 -7.37249576667 -12.2810377713
-2.06533084541 8.23741345333 5.9397574742"""), table("""0.21879385627 -0.58731641193 3.486957558
-1.18964307357 1.24891317047 -14.9159739347
1.16268885692 -0.50852797392 15.37202186"""), table("""-0.06467735252 -0.95208758351 -0.62609792333
0.19758818347 2.99242575222 1.29246858189
-0.80875619458 -2.38026356489 1.654278309
0.69028490492 -0.27012609786 -3.43967436378""")]
QUADRUPOLE = [table("""1.237830788 1.285410878 1.794295401
2.435503144 -11.46561451 0.769510293
1.633090469 22.08689285 7.264792255
-1.611815241 7.46913832 94.48669892
6.977118504 -17.19777208 -77.1484579"""), table("""0.454271755 -0.813734006 6.868267516
-4.501626435 10.06402986 -5.173223765
3.585886783 -10.87663092 -17.2402066"""), table("""-0.500043713 2.000209381 3.135827145
6.531869153 -6.78386584 7.247588801
-16.01477983 20.38324603 3.075947834
14.42597018 -10.89598394 0""")]


class Fluid:
    def __init__(self, name):
        rows = [r.split("!")[0].strip() for r in (ROOT / f"data/fluids/{name}.saf").read_text().splitlines()]
        rows = [r for r in rows if r]
        self.tmin, self.m, self.sigma, self.epsil = (mp.mpf(float(rows[k])) for k in (1, 5, 6, 7))
        self.dipole = self.quadrupole = mp.mpf(0)
        self.sites, self.energy, self.volume = [], {}, mp.mpf(0)
        rest = rows[13:]
        while rest and rest[0] != "eof":
            keyword = rest.pop(0)
            if keyword == "associating":
                types = int(rest.pop(0))
                self.sites = [int(rest.pop(0)) for _ in range(types)]
                for a in range(types):
                    for b in range(a + 1, types):
                        self.energy[a, b] = self.energy[b, a] = mp.mpf(float(rest.pop(0)))
                self.volume = mp.mpf(float(rest.pop(0)))
            else:
                value = mp.mpf(float(rest.pop(0)))
                if keyword == "dipolar":
                    self.dipole = value
                elif keyword == "quadrupolar":
                    self.quadrupole = value

    def at(self, t):
        self.t = t
        d = self.sigma * (1 - mp.mpf("0.12") * mp.exp(-3 * self.epsil / t))
        self.eta_rho = PI / 6 * self.m * d**3  # packing fraction per number density
        return self

    def a(self, eta):
        """Residual Helmholtz energy over R t."""
        m, t, rho = self.m, self.t, eta / self.eta_rho
        g = (1 - eta / 2) / (1 - eta)**3
        e = eta / (1 - eta)
        value = m * e * (4 + e) - (m - 1) * mp.log(g)
        p, q = 1 - 1 / m, (1 - 1 / m) * (1 - 2 / m)
        i1 = sum((r[0] + p * r[1] + q * r[2]) * eta**k for k, r in enumerate(AP))
        i2 = sum((r[0] + p * r[1] + q * r[2]) * eta**k for k, r in enumerate(BP))
        c1 = 1 / (1 + 2 * m * eta * (4 - eta) / (1 - eta)**4 +
                  (1 - m) * eta * (20 - 27 * eta + 12 * eta**2 - 2 * eta**3) / ((1 - eta) * (2 - eta))**2)
        h = self.epsil / t
        value -= PI * rho * m**2 * self.sigma**3 * (2 * i1 * h + m * c1 * i2 * h**2)
        return value + self.association(rho, g) + self.polar(rho, eta, h)

    def association(self, rho, g):
        if not self.sites:
            return 0
        n = len(self.sites)
        bond = mp.matrix(n, n)
        for (k, l), energy in self.energy.items():
            bond[k, l] = rho * self.sites[l] * g * self.sigma**3 * self.volume * (mp.exp(energy / self.t) - 1)
        x = mp.matrix([mp.mpf(1) / 2] * n)
        for _ in range(60):  # successive substitution, then Newton's method
            x = mp.matrix([1 / (1 + (bond * x)[k]) for k in range(n)]) * mp.mpf("0.5") + x * mp.mpf("0.5")
        for _ in range(12):
            b = bond * x
            j = mp.matrix(n, n)
            for k in range(n):
                for l in range(n):
                    j[k, l] = x[k] * bond[k, l] + ((1 + b[k]) if k == l else 0)
            x -= mp.lu_solve(j, mp.matrix([x[k] * (1 + b[k]) - 1 for k in range(n)]))
        return sum(s * (mp.log(x[k]) + (1 - x[k]) / 2) for k, s in enumerate(self.sites))

    def polar(self, rho, eta, h):
        """One moment: the library's numbers for the factors of the moments' units."""
        assert not (self.dipole and self.quadrupole)
        if not (self.dipole or self.quadrupole):
            return 0
        capped = min(self.m, mp.mpf(2))
        f1 = (capped - 1) / capped
        f2 = f1 * (capped - 2) / capped
        series = [sum((r[0] + f1 * r[1] + f2 * r[2]) * eta**k for k, r in enumerate(rows))
                  for rows in (DIPOLE if self.dipole else QUADRUPOLE)]
        if self.dipole:
            moment = self.dipole**2 / self.m
            gamma2, gamma3 = moment**2 / self.sigma**3, -mp.mpf(4) / 3 * moment**3 / self.sigma**3
        else:
            moment = self.quadrupole**2 / self.m
            gamma2 = mp.mpf("0.5625") * moment**2 / self.sigma**7
            gamma3 = mp.mpf("0.5625") * moment**3 / self.sigma**9
        a2 = -mp.mpf("164806748.95831627") * rho / self.t**2 * gamma2 * (series[0] + series[1] * h)
        a3 = mp.mpf("3750053166155.6084") * rho**2 / self.t**3 * gamma3 * series[2]
        return a2 / (1 - a3 / a2)

    def z(self, eta):
        step = eta * mp.mpf(10)**-12  # a fourth-order difference, exact to 1e-48
        slope = (8 * (self.a(eta + step) - self.a(eta - step)) - self.a(eta + 2 * step) +
                 self.a(eta - 2 * step)) / (12 * step)
        return 1 + eta * slope

    def saturation(self, liquid, vapour):
        """psat [Pa] and both densities [mol/m3]."""
        def equations(x, y):
            l, v = mp.exp(x), mp.exp(y)
            zl, zv = self.z(l), self.z(v)
            return [self.a(l) + zl + x - self.a(v) - zv - y, (l * zl - v * zv) / (v * zv)]
        x, y = mp.findroot(equations, (mp.log(liquid), mp.log(vapour)), tol=mp.mpf(10)**-42, maxsteps=60)
        l, v = mp.exp(x), mp.exp(y)
        return [KA * self.t * v / self.eta_rho * self.z(v), l / self.eta_rho / AVOGADRO, v / self.eta_rho / AVOGADRO]


def main():
    lib = Library(pathlib.Path(sys.argv[1]).resolve())
    print("fluid,t,psat,rho_l,rho_v")
    for name in FLUIDS:
        lib.select(name)
        tc = lib.info()["tc"]
        fluid = Fluid(name)
        for t in [float(fluid.tmin)] + [f * tc for f in (0.99, 0.999, 0.9999)]:
            fluid.at(mp.mpf(t))
            (psat,), _ = lib.psat(t)
            start = [AVOGADRO * fluid.eta_rho / lib._text("calc_v", t, psat, k)[0][0] for k in (1, 2)]
            print(name, repr(t), *(mp.nstr(v, 18) for v in fluid.saturation(*start)), sep=",", flush=True)


if __name__ == "__main__":
    main()
