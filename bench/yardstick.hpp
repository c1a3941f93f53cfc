#pragma once

/// a of methane, ethane, propane, n-butane at fractions `x`, `t` [K], `rho` [1/A3].
double yardstick(double t, double rho, const double* x);
