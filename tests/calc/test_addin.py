"""Installs the add-in for a user of its own, opens a spreadsheet without a window, and compares cells with the package.

Usage: test_addin.py BUILD_CALC
"""

import pathlib
import subprocess
import sys
import time

import uno
from com.sun.star.beans import PropertyValue

BUILD = pathlib.Path(sys.argv[1]).resolve()
sys.path.insert(0, str(BUILD / "content" / "pythonpath"))
import tessarel  # noqa: E402

PROFILE = f"-env:UserInstallation=file://{BUILD}/profile"
PIPE = "tessarelcalc"
GAS = tessarel.Fluid({"methane": 0.9, "ethane": 0.1})
TWO = GAS.state(T=180, P=20e5)
CASES = [  # formula, what the cell must hold
    ('=TESSAREL("h";"TP";300;1E5;"propane")', tessarel.Fluid("propane").state(T=300, P=1e5).h),
    ('=TESSAREL("density";"Tq";300;0;"propane";)', tessarel.Fluid("propane").state(T=300, q=0).density),
    ('=TESSAREL("h";"TP";180;2E6;"methane=0.9 ethane=0.1")', TWO.h),
    ('=TESSAREL("q";"TP";180;2E6;A1:A2;B1:B2)', TWO.q),
    ('=TESSAREL("liquid density";"TP";180;2E6;A1:A2;B1:B2)', TWO.liquid.density),
    ('=TESSAREL("x ethane";"TP";180;2E6;A1:A2;B1:B2)', float(TWO.x[1])),
    ('=TESSAREL("T";"Ph";1E6;TESSAREL("h";"TP";300;8E6;A1:A2;B1:B2);A1:A2;B1:B2)',
     GAS.state(P=1e6, h=GAS.state(T=300, P=8e6).h).T),
    ('=TESSAREL("phase";"TP";180;2E6;A1:A2;B1:B2)', "two phases"),
    ('=TESSAREL("h";"TP";300;1E5;"unobtainium")', "unobtainium"),
    ('=TESSAREL("h";"TP";-1;1E5;"propane")', "must be finite numbers"),
    ('=TESSAREL("_derived";"TP";300;1E5;"propane")', "no property"),
    ('=TESSAREL("h";"XY";300;1E5;"propane")', "no property"),
]  # fmt: skip


def connect():
    resolver = uno.getComponentContext().ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
    for _ in range(120):
        try:
            return resolver.resolve(f"uno:pipe,name={PIPE};urp;StarOffice.ComponentContext")
        except Exception:
            time.sleep(0.5)
    sys.exit("the office did not start")


def main():
    subprocess.run(["unopkg", "add", "--suppress-license", "-f", PROFILE, str(BUILD / "tessarel.oxt")], check=True,
                   timeout=120)
    office = subprocess.Popen(["soffice", PROFILE, "--headless", "--norestore", f"--accept=pipe,name={PIPE};urp;"])
    try:
        context = connect()
        desktop = context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        hidden = PropertyValue(Name="Hidden", Value=True)
        document = desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, (hidden,))
        sheet = document.Sheets.getByIndex(0)
        for row, (name, fraction) in enumerate((("methane", 0.9), ("ethane", 0.1))):
            sheet.getCellByPosition(0, row).String = name
            sheet.getCellByPosition(1, row).Value = fraction
        failed = 0
        for row, (formula, expected) in enumerate(CASES):
            cell = sheet.getCellByPosition(3, row)
            cell.Formula = formula
            if isinstance(expected, str):
                good = expected in cell.String
            else:
                good = abs(cell.Value - expected) <= 1e-12 * abs(expected)
            failed += not good
            print("ok  " if good else "FAIL", formula, cell.String, "" if good else expected)
        document.close(True)
        try:
            desktop.terminate()
        except Exception:  # the connection ends with the office
            pass
        office.wait(60)
    finally:
        office.kill()
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
