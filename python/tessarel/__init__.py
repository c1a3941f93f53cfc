"""Thermodynamic properties of pure fluids and mixtures by the PC-SAFT equation of state.

    import tessarel
    gas = tessarel.Fluid({"methane": 0.85, "ethane": 0.10, "propane": 0.05})
    print(gas.state(T=250, P=40e5))

All values are SI, per mole: K, Pa, m3/mol, J/mol, J/(mol K); names that end in _mass are per kilogram.
"""

from ._native import GAS_CONSTANT, Error
from .envelope import Envelope, Sensitivity
from .arrays import States
from .fluid import BoundaryPoint, CriticalPoint, Fluid, RangeWarning, Spinodal
from .names import fluids, substances
from .state import Phase, Properties, State

__version__ = "2.5.1"
__all__ = [
    "BoundaryPoint",
    "CriticalPoint",
    "Envelope",
    "Error",
    "Fluid",
    "GAS_CONSTANT",
    "Phase",
    "Properties",
    "RangeWarning",
    "Sensitivity",
    "Spinodal",
    "State",
    "States",
    "fluids",
    "substances",
]
