"""The spreadsheet function TESSAREL(property; pair; a; b; fluid; fractions) as a component of LibreOffice Calc."""

from functools import lru_cache

import unohelper
from com.sun.star.lang import XLocalizable, XServiceInfo, XServiceName
from com.sun.star.sheet import XAddIn
from tessarelcalc import XFunction  # of XFunction.idl

IMPLEMENTATION = "tessarelcalc.CalcFunction"
SERVICE = "com.sun.star.sheet.AddIn"


def _cells(argument):
    """The values of a range of cells in reading order; of a single value that value."""
    if isinstance(argument, tuple):
        return [cell for row in argument for cell in (row if isinstance(row, tuple) else (row,)) if cell not in ("", None)]
    return [] if argument in ("", None) else [argument]


@lru_cache(maxsize=64)
def _fluid(names, fractions):
    from tessarel import Fluid, batch

    if fractions:
        return Fluid(list(names), list(fractions))
    if len(names) > 1:
        raise ValueError("mole fractions are missing")
    return Fluid(batch.composition_of(batch.split_components(names[0]) if "=" in names[0] else [names[0]]))


@lru_cache(maxsize=4096)
def _state(names, fractions, pair, first, second):
    letters = pair.strip()
    if len(letters) != 2:
        raise ValueError(f'"{pair}" is not a pair such as TP')
    return _fluid(names, fractions).state(**{letters[0]: first, letters[1]: second})


def value(name, pair, first, second, fluid, fractions):
    """The property, or a text that says why there is none."""
    try:
        names = tuple(str(cell) for cell in _cells(fluid))
        if not names:
            return "no fluid given"
        numbers = tuple(float(cell) for cell in _cells(fractions))
        state = _state(names, numbers, str(pair), float(first), float(second))
        part, _, rest = str(name).strip().partition(" ")
        if part in ("liquid", "vapour") and rest:
            state, part = getattr(state, part), rest.strip()
        elif part in ("x", "y", "z") and rest:
            return float(getattr(state, part)[state.fluid.names.index(rest.strip())])
        if part.startswith("_") or not hasattr(type(state), part):
            return f'no property "{name}"'
        result = getattr(state, part)
        return result if isinstance(result, str) else float(result)
    except Exception as error:  # whatever it is, the cell shows it and the spreadsheet lives on
        return str(error)


class CalcFunction(unohelper.Base, XFunction, XAddIn, XServiceName, XServiceInfo, XLocalizable):
    def __init__(self, context):
        self.locale = None

    def evaluate(self, name, pair, first, second, fluid, fractions):
        return value(name, pair, first, second, fluid, fractions)

    # What the function wizard shows stands in CalcAddIns.xcu; the interface wants these all the same.
    def getProgrammaticFuntionName(self, display):  # the misspelling is the interface's
        return "evaluate" if display == "TESSAREL" else ""

    def getDisplayFunctionName(self, programmatic):
        return "TESSAREL" if programmatic == "evaluate" else ""

    def getFunctionDescription(self, programmatic):
        return ""

    def getDisplayArgumentName(self, programmatic, argument):
        return ""

    def getArgumentDescription(self, programmatic, argument):
        return ""

    def getProgrammaticCategoryName(self, programmatic):
        return "Add-In"

    def getDisplayCategoryName(self, programmatic):
        return "Add-In"

    def setLocale(self, locale):
        self.locale = locale

    def getLocale(self):
        return self.locale

    def getServiceName(self):
        return SERVICE

    def getImplementationName(self):
        return IMPLEMENTATION

    def supportsService(self, name):
        return name in self.getSupportedServiceNames()

    def getSupportedServiceNames(self):
        return (SERVICE, IMPLEMENTATION)


g_ImplementationHelper = unohelper.ImplementationHelper()
g_ImplementationHelper.addImplementation(CalcFunction, IMPLEMENTATION, (SERVICE, IMPLEMENTATION))
