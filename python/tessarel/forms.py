"""What follows from the molar values of a state, for numbers and arrays alike. Molar SI units; _mass is per kilogram."""

from __future__ import annotations

from typing import Any

from ._native import GAS_CONSTANT

# A float, or an array of them.
Value = Any


class Forms:
    """Needs T [K], P [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)] and molar_mass [kg/mol]."""

    __slots__ = ()

    @property
    def rho(self) -> Value:
        """Molar density [mol/m3], 1/v."""
        return 1 / self.v

    @property
    def density(self) -> Value:
        """Mass density [kg/m3], molar_mass/v."""
        return self.molar_mass / self.v

    @property
    def g(self) -> Value:
        """Gibbs energy [J/mol], h - T s."""
        return self.h - self.T * self.s

    @property
    def a(self) -> Value:
        """Helmholtz energy [J/mol], u - T s."""
        return self.u - self.T * self.s

    @property
    def z_factor(self) -> Value:
        """Compressibility factor P v/(R T) with the gas constant of the library, R = 8.31441 J/(mol K)."""
        return self.P * self.v / (GAS_CONSTANT * self.T)

    @property
    def v_mass(self) -> Value:
        """Specific volume [m3/kg]."""
        return self.v / self.molar_mass

    @property
    def rho_mass(self) -> Value:
        """Mass density [kg/m3], the same as `density`."""
        return self.density

    @property
    def u_mass(self) -> Value:
        """Specific internal energy [J/kg]."""
        return self.u / self.molar_mass

    @property
    def h_mass(self) -> Value:
        """Specific enthalpy [J/kg]."""
        return self.h / self.molar_mass

    @property
    def s_mass(self) -> Value:
        """Specific entropy [J/(kg K)]."""
        return self.s / self.molar_mass

    @property
    def g_mass(self) -> Value:
        """Specific Gibbs energy [J/kg]."""
        return self.g / self.molar_mass


class HeatForms(Forms):
    """The same with cv and cp [J/(mol K)]."""

    __slots__ = ()

    @property
    def cv_mass(self) -> Value:
        """Isochoric heat capacity [J/(kg K)]."""
        return self.cv / self.molar_mass

    @property
    def cp_mass(self) -> Value:
        """Isobaric heat capacity [J/(kg K)]."""
        return self.cp / self.molar_mass
