/* A host in C: single-phase states of propane and of a natural gas, as a table.
 *
 * It includes nothing of the library but the installed header:
 *   cc properties.c -o properties $(pkg-config --cflags --libs tessarel)
 */
#include <stdio.h>
#include <string.h>
#include <tessarel/tessarel.h>

enum { max_components = 20, name_length = 32, message_length = 128 };

/* One call of tessarel_tmdprop with its results, in the units at return. */
struct state {
  const char* spec;
  double t, p, v, u, h, s, q;
  double cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt;
};

/* True when a message reports success. The text is blank-padded and not terminated. */
static int succeeded(const char* message) {
  return strncmp(message, "No errors", 9) == 0;
}

/* Prints a message without the blanks that pad it. */
static void print_message(const char* what, const char* message) {
  int length = message_length;
  while (length > 0 && message[length - 1] == ' ') --length;
  fprintf(stderr, "%s: %.*s\n", what, length, message);
}

static int select_fluid(int32_t n, const char* const* names, const double* z) {
  char fields[max_components * name_length];
  char message[message_length];
  memset(fields, ' ', sizeof fields);
  for (int32_t i = 0; i < n; ++i) memcpy(fields + i * name_length, names[i], strlen(names[i]));
  tessarel_setfluid(&n, fields, z, message, name_length, sizeof message);
  if (!succeeded(message)) print_message("tessarel_setfluid", message);
  return succeeded(message);
}

/* Molar mass of the selected fluid [kg/mol]. */
static double molar_mass(const double* z) {
  double mass = 0, scalar = 0, list[max_components];
  tessarel_fluidinfo(z, &mass, &scalar, &scalar, &scalar, &scalar, list, list, list, list, list);
  return mass;
}

/* Fills the state from the pair that its spec names, with the second-order set. */
static int solve(struct state* a) {
  const int32_t order = 1;
  double x[max_components] = {0}, y[max_components] = {0}, lnphi[max_components];
  char message[message_length];
  tessarel_tmdprop(a->spec, &order, &a->t, &a->p, &a->v, &a->u, &a->h, &a->s, &a->q, &a->cv, &a->dpdt, &a->dpdv,
                   &a->d2pdt2, &a->d2pdv2, &a->d2pdtdv, &a->dcvdt, x, y, lnphi, message, strlen(a->spec),
                   sizeof message);
  if (!succeeded(message)) print_message(a->spec, message);
  return succeeded(message);
}

static void print_table(const struct state* rows, int count) {
  printf("  %-7s %9s %9s %12s %11s %11s %12s\n", "", "T", "p", "v", "u", "h", "s");
  printf("  %-7s %9s %9s %12s %11s %11s %12s\n", "input", "degC", "bar", "m3/kg", "kJ/kg", "kJ/kg", "kJ/(kg K)");
  for (int i = 0; i < count; ++i) {
    const struct state* a = &rows[i];
    printf("  %-7s %9.3f %9.3f %12.5e %11.3f %11.3f %12.5f\n", a->spec, a->t, a->p, a->v, a->u, a->h, a->s);
  }
  printf("\n  %-7s %10s %12s %13s %12s %13s %13s %12s\n", "", "cv", "dp/dT", "dp/dv", "d2p/dT2", "d2p/dv2", "d2p/dTdv",
         "dcv/dT");
  printf("  %-7s %10s %12s %13s %12s %13s %13s %12s\n", "input", "kJ/(kg K)", "Pa/K", "Pa kg/m3", "Pa/K2",
         "Pa (kg/m3)2", "Pa kg/(m3 K)", "J/(kg K2)");
  for (int i = 0; i < count; ++i) {
    const struct state* a = &rows[i];
    printf("  %-7s %10.5f %12.5e %13.5e %12.5e %13.5e %13.5e %12.5e\n", a->spec, a->cv, a->dpdt, a->dpdv, a->d2pdt2,
           a->d2pdv2, a->d2pdtdv, a->dcvdt);
  }
}

/* The same liquid and the same vapour state, asked for by different pairs of properties. */
static int report(const char* title, double mass, double t_liquid, double t_vapour, double p) {
  static const char* const specs[] = {"TP Lph", "Ph Lph", "Ps Lph", "hs Lph", "TP Vph",
                                      "Tv Vph", "Ph Vph", "Ps Vph", "hs Vph", "vu Vph"};
  enum { count = sizeof specs / sizeof *specs };
  struct state rows[count];
  struct state start = {0};
  for (int i = 0; i < count; ++i) {
    struct state* a = &rows[i];
    if (strncmp(specs[i], "TP", 2) == 0) {
      memset(a, 0, sizeof *a);
      a->t = specs[i][3] == 'L' ? t_liquid : t_vapour;
      a->p = p;
    } else {
      /* Results come in engineering units per kg, inputs go in as molar SI values. */
      *a = start;
      a->t = start.t + 273.15;
      a->p = start.p * 1e5;
      a->v = start.v * mass;
      a->u = start.u * mass * 1000;
      a->h = start.h * mass * 1000;
      a->s = start.s * mass * 1000;
    }
    a->spec = specs[i];
    if (!solve(a)) return 0;
    if (strncmp(specs[i], "TP", 2) == 0) start = *a;
  }
  printf("\n%s, molar mass %.4f g/mol\n\n", title, mass * 1000);
  print_table(rows, count);
  return 1;
}

int main(void) {
  int32_t version[4];
  tessarel_getversion(version);
  printf("Tessarel %d.%d.%d.%d\n", version[0], version[1], version[2], version[3]);

  static const char* const propane[] = {"propane"};
  const double pure[] = {1.0};
  if (!select_fluid(1, propane, pure) || !report("Propane", molar_mass(pure), 280.0, 320.0, 10e5)) return 1;

  static const char* const gas[] = {"methane", "ethane", "propane", "n-butane", "nitrogen np"};
  const double z[] = {0.85, 0.07, 0.03, 0.02, 0.03};
  if (!select_fluid(5, gas, z) ||
      !report("Natural gas: methane 0.85, ethane 0.07, propane 0.03, n-butane 0.02, nitrogen 0.03", molar_mass(z),
              190.0, 300.0, 50e5))
    return 1;
  return 0;
}
