/* A host in C: saturation and spinodal of propane, and critical points of mixtures.
 *
 * It calls the forward calculations of tessarel/routines.h, which take and return SI values:
 *   cc saturation.c -o saturation $(pkg-config --cflags --libs tessarel)
 */
#include <stdio.h>
#include <string.h>
#include <tessarel/routines.h>

enum { max_components = 20, name_length = 32, message_length = 128 };

/* A message of the library: blank-padded, not terminated. */
static char message[message_length];

static int succeeded(void) {
  return strncmp(message, "No errors", 9) == 0;
}

/* Length of the message without the blanks that pad it. */
static int text_length(void) {
  int length = message_length;
  while (length > 0 && message[length - 1] == ' ') --length;
  return length;
}

static int select_fluid(int32_t n, const char* const* names, const double* z) {
  char fields[max_components * name_length];
  memset(fields, ' ', sizeof fields);
  for (int32_t i = 0; i < n; ++i) memcpy(fields + i * name_length, names[i], strlen(names[i]));
  tessarel_setfluid(&n, fields, z, message, name_length, sizeof message);
  if (!succeeded()) fprintf(stderr, "tessarel_setfluid: %.*s\n", text_length(), message);
  return succeeded();
}

struct fluid {
  double molar_mass, tc, pc, tmin, tmax;
};

static struct fluid information(const double* z) {
  struct fluid f;
  double list[max_components];
  tessarel_fluidinfo(z, &f.molar_mass, &f.tc, &f.pc, &f.tmin, &f.tmax, list, list, list, list, list);
  return f;
}

/* Molar volume of the liquid (1) or the vapour (2); `message` tells whether it is one. */
static double volume(double t, double p, int32_t phase) {
  double v = 0;
  tessarel_calc_v(&t, &p, &phase, &v, message, sizeof message);
  return v;
}

/* One row of the table; where an iteration fails, its message stands in place of the numbers. */
static void print_saturation(double t, double molar_mass) {
  double p = 0, pspin_liquid = 0, pspin_vapour = 0, v_liquid = 0, v_vapour = 0;
  tessarel_calc_psat(&t, &p, message, sizeof message);
  if (succeeded()) v_liquid = volume(t, p, 1);
  if (succeeded()) v_vapour = volume(t, p, 2);
  if (succeeded()) tessarel_calc_pspin(&t, &pspin_liquid, &pspin_vapour, message, sizeof message);
  if (succeeded())
    printf("  %9.3f %12.6g %12.4f %12.6g %14.6g %14.6g\n", t, p / 1e5, molar_mass / v_liquid, molar_mass / v_vapour,
           pspin_liquid / 1e5, pspin_vapour / 1e5);
  else
    printf("  %9.3f %.*s\n", t, text_length(), message);
}

static void print_pure(const char* title, const double* z) {
  const struct fluid f = information(z);
  printf("%s: critical point %.3f K, %.4f bar\n\n", title, f.tc, f.pc / 1e5);
  printf("  %9s %12s %12s %12s %14s %14s\n", "", "saturation", "liquid", "vapour", "spinodal", "spinodal");
  printf("  %9s %12s %12s %12s %14s %14s\n", "T", "p", "density", "density", "p of liquid", "p of vapour");
  printf("  %9s %12s %12s %12s %14s %14s\n", "K", "bar", "kg/m3", "kg/m3", "bar", "bar");
  enum { steps = 12 };
  const double first = f.tmin > 0.45 * f.tc ? f.tmin : 0.45 * f.tc;
  for (int i = 0; i < steps; ++i) print_saturation(first + (f.tc - first) * i / steps, f.molar_mass);
  print_saturation(f.tc, f.molar_mass);
}

/* The search changes the critical point that the library holds; the next selection finds the averages again. */
static void print_mixture(const char* title, const double* z) {
  const struct fluid f = information(z);
  printf("\n%s\n  averages over the components  %9.3f K %9.4f bar\n", title, f.tc, f.pc / 1e5);
  tessarel_critmixt_newton(message, sizeof message);
  const struct fluid found = information(z);
  if (succeeded())
    printf("  two-level search              %9.3f K %9.4f bar\n", found.tc, found.pc / 1e5);
  else
    printf("  two-level search              %.*s\n", text_length(), message);
}

int main(void) {
  static const char* const propane[] = {"propane"};
  const double pure[] = {1.0};
  if (!select_fluid(1, propane, pure)) return 1;
  print_pure("Propane", pure);

  static const char* const light[] = {"methane", "ethane"};
  const double equimolar[] = {0.5, 0.5};
  if (!select_fluid(2, light, equimolar)) return 1;
  print_mixture("Methane 0.5, ethane 0.5", equimolar);

  static const char* const wide[] = {"carbon dioxide", "propane"};
  const double rich[] = {0.4, 0.6};
  if (!select_fluid(2, wide, rich)) return 1;
  print_mixture("Carbon dioxide 0.4, propane 0.6", rich);
  return 0;
}
