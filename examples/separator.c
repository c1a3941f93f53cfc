/* A host in C: a well stream in a separator, its gas through a valve and through an expander, its phase envelope.
 *
 *   cc separator.c -o separator $(pkg-config --cflags --libs tessarel)
 *
 * Inputs are K, Pa and molar SI values; results come back in degrees C, bar and per kilogram.
 */
#include <stdio.h>
#include <string.h>
#include <tessarel/routines.h>
#include <tessarel/tessarel.h>

enum { components = 6, name_length = 12, message_length = 120 };

static const char names[] =
    "methane     "
    "ethane      "
    "propane     "
    "n-butane    "
    "n-pentane   "
    "n-hexane    ";
static char message[message_length];

/* True after success; else prints the text, which is blank-padded and not terminated. */
static int succeeded(const char* what) {
  if (strncmp(message, "No errors", 9) == 0) return 1;
  int length = message_length;
  while (length > 0 && message[length - 1] == ' ') --length;
  fprintf(stderr, "%s: %.*s\n", what, length, message);
  return 0;
}

/* A state with both of its phases, in the units at return. */
struct state {
  double t, p, v, h, s, u, q;
  double x[components], y[components];
  double v_l, v_v, h_l, h_v, s_l, s_v, u_l, u_v;
};

static int solve(const char* pair, struct state* a) {
  tessarel_tmdpropsat(pair, &a->t, &a->p, &a->v, &a->h, &a->s, &a->u, &a->q, a->x, a->y, &a->v_l, &a->v_v, &a->h_l,
                      &a->h_v, &a->s_l, &a->s_v, &a->u_l, &a->u_v, message, strlen(pair), message_length);
  return succeeded(pair);
}

static int select_stream(const double* z, double* molar_mass) {
  const int32_t n = components;
  tessarel_setfluid(&n, names, z, message, name_length, message_length);
  if (!succeeded("tessarel_setfluid")) return 0;
  double scalar, list[components];
  tessarel_fluidinfo(z, molar_mass, &scalar, &scalar, &scalar, &scalar, list, list, list, list, list);
  return 1;
}

static void print_end(const char* what, const struct state* a) {
  printf("%-34s %8.2f degC %7.2f bar, vapour %6.2f mol%%, %8.2f kJ/kg, %7.4f kJ/(kg K)\n", what, a->t, a->p, 100 * a->q,
         a->h, a->s);
}

int main(void) {
  const double z[components] = {0.70, 0.10, 0.08, 0.05, 0.04, 0.03};
  double mass, t_max, p_t_max, p_max, t_p_max, tc, pc, rhoc;
  if (!select_stream(z, &mass)) return 1;

  /* The separator, 15 degrees C and 40 bar. */
  struct state inlet = {.t = 288.15, .p = 40e5};
  if (!solve("TP", &inlet)) return 1;
  printf("Separator at %.2f degC and %.2f bar: %.2f mol%% vapour\n", inlet.t, inlet.p, 100 * inlet.q);
  printf("  density      %9.3f kg/m3 liquid, %8.3f kg/m3 vapour\n", 1 / inlet.v_l, 1 / inlet.v_v);
  for (int i = 0; i < components; ++i)
    printf("  %.*s %9.5f liquid, %14.5f vapour\n", name_length, names + i * name_length, inlet.x[i], inlet.y[i]);

  /* Its phase envelope. */
  tessarel_getmaxima(&t_max, &p_t_max, &p_max, &t_p_max);
  tessarel_criticalpoint(&tc, &pc, &rhoc, message, message_length);
  if (!succeeded("tessarel_criticalpoint")) return 1;
  printf("\nPhase envelope of the stream\n");
  printf("  cricondentherm %8.2f degC at %7.2f bar\n", t_max - 273.15, p_t_max);
  printf("  cricondenbar   %8.2f degC at %7.2f bar\n", t_p_max - 273.15, p_max);
  printf("  critical point %8.2f degC at %7.2f bar\n", tc - 273.15, pc / 1e5);

  /* The gas of the separator: a stream of its own. */
  const struct state start = inlet;
  if (!select_stream(start.y, &mass)) return 1;
  struct state gas = {.t = start.t + 273.15 + 1e-6, .p = start.p * 1e5};
  if (!solve("TP", &gas)) return 1;
  printf("\n");
  print_end("Gas of the separator", &gas);

  /* A valve keeps the enthalpy, an ideal expander the entropy. */
  struct state valve = {.p = 10e5, .h = gas.h * mass * 1000};
  struct state expander = {.p = 10e5, .s = gas.s * mass * 1000};
  if (!solve("Ph", &valve) || !solve("Ps", &expander)) return 1;
  print_end("  through a valve to 10 bar (Ph)", &valve);
  print_end("  through an expander (Ps)", &expander);
  printf("  work of the expander %.2f kJ/kg\n", gas.h - expander.h);
  return 0;
}
