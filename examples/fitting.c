/* A host in C: fits of model parameters by least squares.
 *
 * Propane's m, sigma and epsilon from its vapour pressures and liquid densities, and k_ij of carbon dioxide and propane
 * from bubble points. The "measurements" are made with the library from the parameters that ship, so that the fits,
 * which start elsewhere, must find these again:
 *   cc fitting.c -o fitting $(pkg-config --cflags --libs tessarel) -lm
 */
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <tessarel/tessarel.h>

enum { max_parameters = 3, max_residuals = 40, name_length = 32, message_length = 128 };

static char message[message_length];

static int succeeded(void) {
  return strncmp(message, "No errors", 9) == 0;
}

/* Fills the residuals of trial parameters; returns 0 where the model has no answer. */
typedef int residuals_of(const double* parameters, double* residuals);

static double sum_of_squares(int count, const double* r) {
  double sum = 0;
  for (int i = 0; i < count; ++i) sum += r[i] * r[i];
  return sum;
}

/* Solves a x = b in place of b by elimination; a is positive definite. */
static void solve(int n, double a[max_parameters][max_parameters], double* b) {
  for (int k = 0; k < n; ++k)
    for (int i = k + 1; i < n; ++i) {
      const double factor = a[i][k] / a[k][k];
      for (int j = k; j < n; ++j) a[i][j] -= factor * a[k][j];
      b[i] -= factor * b[k];
    }
  for (int k = n - 1; k >= 0; --k) {
    for (int j = k + 1; j < n; ++j) b[k] -= a[k][j] * b[j];
    b[k] /= a[k][k];
  }
}

/* Levenberg-Marquardt: Gauss-Newton steps, damped as long as they do not lower the sum of squares. The slopes are
 * differences over `step`. Returns the number of steps, or -1. */
static int fit(residuals_of* model, int parameters, double* p, const double* step, int count) {
  double r[max_residuals], shifted[max_residuals], slope[max_parameters][max_residuals], damping = 1e-3;
  if (!model(p, r)) return -1;
  for (int pass = 1; pass <= 50; ++pass) {
    for (int k = 0; k < parameters; ++k) {
      double trial[max_parameters];
      memcpy(trial, p, sizeof trial);
      trial[k] += step[k];
      if (!model(trial, shifted)) return -1;
      for (int i = 0; i < count; ++i) slope[k][i] = (shifted[i] - r[i]) / step[k];
    }
    for (;;) {
      double normal[max_parameters][max_parameters] = {{0}}, change[max_parameters] = {0}, trial[max_parameters];
      for (int k = 0; k < parameters; ++k) {
        for (int l = 0; l < parameters; ++l)
          for (int i = 0; i < count; ++i) normal[k][l] += slope[k][i] * slope[l][i];
        normal[k][k] *= 1 + damping;
        for (int i = 0; i < count; ++i) change[k] -= slope[k][i] * r[i];
      }
      solve(parameters, normal, change);
      double largest = 0;
      memcpy(trial, p, sizeof trial);
      for (int k = 0; k < parameters; ++k) {
        trial[k] += change[k];
        largest = fmax(largest, fabs(change[k] / step[k]));
      }
      if (largest < 1e-4) return pass;
      if (model(trial, shifted) && sum_of_squares(count, shifted) < sum_of_squares(count, r)) {
        memcpy(p, trial, sizeof trial);
        memcpy(r, shifted, sizeof r);
        damping /= 10;
        break;
      }
      damping *= 10;
      if (damping > 1e10) return pass;
    }
  }
  return -1;
}

static int select_fluids(int32_t n, const char* const* names, const double* z) {
  char fields[2 * name_length];
  memset(fields, ' ', sizeof fields);
  for (int32_t i = 0; i < n; ++i) memcpy(fields + i * name_length, names[i], strlen(names[i]));
  tessarel_setfluid(&n, fields, z, message, name_length, sizeof message);
  return succeeded();
}

/* The measurements: temperatures, with pressures and densities of the saturated liquid. */
enum { points = 12 };
static double t_of[points], p_of[points], rho_of[points];

static int saturated_propane(const double* parameters, double* r) {
  for (int i = 0; i < points; ++i) {
    double p, rho;
    tessarel_prho_mset(&parameters[0], &parameters[1], &parameters[2], &t_of[i], &p, &rho, message, sizeof message);
    if (!succeeded() || p <= 0) return 0;
    r[i] = log(p / p_of[i]);
    r[points + i] = rho / rho_of[i] - 1;
  }
  return 1;
}

static int bubble_points(const double* parameters, double* r) {
  const double bubble = 0;
  for (int i = 0; i < points; ++i) {
    double p;
    tessarel_p_kij(&parameters[0], &t_of[i], &bubble, &p, message, sizeof message);
    if (!succeeded()) return 0;
    r[i] = log(p / p_of[i]);
  }
  return 1;
}

static int print_fit(const char* name, double start, double fitted, double known) {
  const int found = fabs(fitted - known) < 1e-7 * fabs(known);
  printf("  %-8s %12.6f %14.8f %14.8f  %s\n", name, start, fitted, known, found ? "found" : "missed");
  return found;
}

int main(void) {
  static const char* const propane[] = {"propane"};
  static const char* const keys[] = {"mseg", "sigma", "epsil"};
  const double one[] = {1.0};
  const int32_t first = 1, second = 2;
  if (!select_fluids(1, propane, one)) return 1;

  double known[3], start[3], p[3], step[3], r[max_residuals];
  for (int k = 0; k < 3; ++k) {
    tessarel_getparameter(keys[k], &first, &known[k], message, strlen(keys[k]), sizeof message);
    start[k] = p[k] = known[k] * (k == 0 ? 1.15 : k == 1 ? 0.96 : 0.93);
    step[k] = 1e-5 * known[k];
  }
  for (int i = 0; i < points; ++i) {
    t_of[i] = 200 + 12.0 * i;
    tessarel_prho_mset(&known[0], &known[1], &known[2], &t_of[i], &p_of[i], &rho_of[i], message, sizeof message);
    if (!succeeded()) return 1;
  }
  int steps = fit(saturated_propane, 3, p, step, 2 * points), found = 1;
  printf("Propane, %d vapour pressures and liquid densities, %d steps\n", points, steps);
  printf("  %-8s %12s %14s %14s\n", "", "start", "fitted", "known");
  for (int k = 0; k < 3; ++k) found = print_fit(keys[k], start[k], p[k], known[k]) && found;

  static const char* const pair[] = {"carbon dioxide", "propane"};
  const double z[] = {0.4, 0.6}, kij = 0.1142;
  if (!select_fluids(2, pair, z)) return 1;
  double trial[max_parameters] = {kij};
  for (int i = 0; i < points; ++i) t_of[i] = 230 + 6.0 * i, p_of[i] = 1;
  if (!bubble_points(trial, r)) return 1;
  for (int i = 0; i < points; ++i) p_of[i] = exp(r[i]);
  trial[0] = 0;
  step[0] = 1e-5;
  steps = fit(bubble_points, 1, trial, step, points);
  printf("Carbon dioxide and propane, %d bubble points, %d steps\n", points, steps);
  found = print_fit("k_ij", 0, trial[0], kij) && found;

  /* The fluid of the fit for all other calls, with its critical point. */
  tessarel_setkij(&first, &second, &trial[0], message, sizeof message);
  return found && succeeded() ? 0 : 1;
}
