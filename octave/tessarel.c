/* The library under Octave and MATLAB: one function, tessarel(command, fluids, z, ...). Its help is in tessarel.m.
 *
 *   mkoctfile --mex tessarel.c -I../include -L<lib> -ltessarel -Wl,-rpath,<lib>
 *
 * A session of its own keeps other users of the library in the same process apart. Molar SI units. */
#include <stdint.h>
#include <string.h>
#include <tessarel/routines.h>
#include <tessarel/tessarel.h>

#include "mex.h"

enum { max_components = 20, name_length = 32, text_length = 200, text_count = 8, points = 5000 };

static int64_t own_session = 0, hosts_session = 0;

static void leave(void) {
  char err[text_length];
  tessarel_session_use(&hosts_session, err, sizeof err);
}

/* Ends the call with a message; `err` is a field padded with blanks. */
static void fail(const char* err, size_t size) {
  char text[text_length + 1] = "";
  while (size > 0 && err[size - 1] == ' ') --size;
  memcpy(text, err, size < text_length ? size : text_length);
  leave();
  mexErrMsgIdAndTxt("tessarel:failed", "%s", text);
}

static void check(const char* err) {
  if (strncmp(err, "No errors", 9) != 0) fail(err, text_length);
}

static void refuse(const char* text) {
  fail(text, strlen(text));
}

static void enter(void) {
  char err[text_length];
  tessarel_session_current(&hosts_session);
  if (own_session == 0) {
    tessarel_session_new(&own_session, err, sizeof err);
    if (strncmp(err, "No errors", 9) != 0) own_session = 0;
    check(err);
  }
  tessarel_session_use(&own_session, err, sizeof err);
  check(err);
}

/* Selects what the second and third argument name; returns the number of components. */
static int32_t select_fluid(const mxArray* names, const mxArray* z) {
  char fields[max_components * name_length], err[text_length];
  memset(fields, ' ', sizeof fields);
  const int cell = mxIsCell(names);
  const size_t count = cell ? mxGetNumberOfElements(names) : 1;
  if (count < 1 || count > max_components) refuse("the number of components must be 1 to 20");
  for (size_t i = 0; i < count; ++i) {
    const mxArray* one = cell ? mxGetCell(names, i) : names;
    char name[name_length + 1];
    if (one == NULL || !mxIsChar(one) || mxGetString(one, name, sizeof name) != 0)
      refuse("a fluid's name must be a text of at most 32 characters");
    memcpy(fields + i * name_length, name, strlen(name));
  }
  if (!mxIsDouble(z) || mxIsComplex(z) || mxGetNumberOfElements(z) != count)
    refuse("one mole fraction must be given for each fluid");
  double sum = 0;
  for (size_t i = 0; i < count; ++i) sum += mxGetPr(z)[i];
  if (!(sum > 1 - 1e-6 && sum < 1 + 1e-6)) refuse("the mole fractions do not add up to 1");
  const int32_t n = (int32_t)count;
  tessarel_setfluid(&n, fields, mxGetPr(z), err, name_length, sizeof err);
  check(err);
  return n;
}

static const double* numbers(const mxArray* argument, size_t* count) {
  if (!mxIsDouble(argument) || mxIsComplex(argument)) refuse("values of properties must be real numbers");
  *count = mxGetNumberOfElements(argument);
  return mxGetPr(argument);
}

/* The library's mark of what was not computed becomes NaN. */
static void marks_to_nan(double* values, size_t count) {
  for (size_t k = 0; k < count; ++k)
    if (values[k] == -8888.8) values[k] = mxGetNaN();
}

/* A column of results as a field of the shape of the inputs. */
static void set_field(mxArray* out, const char* name, const double* values, const mxArray* shape) {
  mxArray* field = mxCreateNumericArray(mxGetNumberOfDimensions(shape), mxGetDimensions(shape), mxDOUBLE_CLASS, mxREAL);
  memcpy(mxGetPr(field), values, mxGetNumberOfElements(shape) * sizeof(double));
  marks_to_nan(mxGetPr(field), mxGetNumberOfElements(shape));
  mxSetField(out, 0, name, field);
}

static mxArray* matrix(size_t rows, size_t columns, const double* values) {
  mxArray* out = mxCreateDoubleMatrix(rows, columns, mxREAL);
  memcpy(mxGetPr(out), values, rows * columns * sizeof(double));
  marks_to_nan(mxGetPr(out), rows * columns);
  return out;
}

static mxArray* states(int32_t n, const char* pair, const mxArray* first, const mxArray* second) {
  static const char* fields[] = {"T", "P",  "v",     "u",     "h", "s", "q", "cv",     "cp",
                                 "w", "jt", "kappa", "alpha", "g", "x", "y", "message"};
  size_t count_a, count_b;
  const double *a = numbers(first, &count_a), *b = numbers(second, &count_b);
  if (count_a != count_b && count_a != 1 && count_b != 1) refuse("the values of both properties differ in number");
  const mxArray* shape = count_a >= count_b ? first : second;
  const size_t count = count_a == 0 || count_b == 0 ? 0 : count_a > count_b ? count_a : count_b;
  if (count == 0) refuse("no values of the properties");
  double* given = mxCalloc(2 * count, sizeof(double));
  for (size_t k = 0; k < count; ++k) {
    given[k] = a[count_a == 1 ? 0 : k];
    given[count + k] = b[count_b == 1 ? 0 : k];
  }
  double* values = mxCalloc((14 + 2 * (size_t)n) * count, sizeof(double));
  double *derived = values + 7 * count, *x = derived + 7 * count, *y = x + (size_t)n * count;
  int32_t *codes = mxCalloc(count, sizeof(int32_t)), used = text_count;
  char texts[text_count * text_length], err[text_length];
  const int64_t total = (int64_t)count;
  tessarel_states(pair, &total, given, given + count, values, NULL, NULL, derived, x, y, codes, &used, texts, err,
                  strlen(pair), text_length, sizeof err);
  check(err);
  if (count == 1 && codes[0] != 0) fail(texts, text_length);

  mxArray* out = mxCreateStructMatrix(1, 1, (int)(sizeof fields / sizeof *fields), fields);
  for (size_t k = 0; k < 14; ++k) set_field(out, fields[k], values + k * count, shape);
  mxSetField(out, 0, "x", matrix((size_t)n, count, x));
  mxSetField(out, 0, "y", matrix((size_t)n, count, y));
  mxArray* messages = mxCreateCellMatrix(1, count);
  for (size_t k = 0; k < count; ++k) {
    char text[text_length + 1] = "";
    if (codes[k] > 0) memcpy(text, texts + (size_t)(codes[k] - 1) * text_length, text_length);
    if (codes[k] < 0) strcpy(text, "no state");
    for (size_t end = strlen(text); end > 0 && text[end - 1] == ' '; --end) text[end - 1] = '\0';
    mxSetCell(messages, k, mxCreateString(text));
  }
  mxSetField(out, 0, "message", messages);
  mxFree(given);
  mxFree(values);
  mxFree(codes);
  return out;
}

static mxArray* critical(void) {
  static const char* fields[] = {"T", "P", "rho"};
  double value[3];
  char err[text_length];
  tessarel_criticalpoint(&value[0], &value[1], &value[2], err, sizeof err);
  check(err);
  mxArray* out = mxCreateStructMatrix(1, 1, 3, fields);
  for (int k = 0; k < 3; ++k) mxSetField(out, 0, fields[k], mxCreateDoubleScalar(value[k]));
  return out;
}

static mxArray* envelope(int32_t n) {
  static const char* fields[] = {"T", "P", "x", "y"};
  if (n < 2) refuse("a pure fluid has a saturation line, not a phase envelope");
  double* t = mxCalloc((2 + 2 * 20) * points, sizeof(double));
  double *p = t + points, *x = p + points, *y = x + 20 * points;
  int32_t count = 0;
  tessarel_phaseenvelope(&count, t, p, x, y);
  if (count <= 0) refuse("no phase envelope found");
  for (int k = 0; k < count; ++k) {
    t[k] += 273.15;
    p[k] *= 1e5;
    memmove(x + k * n, x + 20 * k, (size_t)n * sizeof(double));
    memmove(y + k * n, y + 20 * k, (size_t)n * sizeof(double));
  }
  mxArray* out = mxCreateStructMatrix(1, 1, 4, fields);
  mxSetField(out, 0, "T", matrix(1, (size_t)count, t));
  mxSetField(out, 0, "P", matrix(1, (size_t)count, p));
  mxSetField(out, 0, "x", matrix((size_t)n, (size_t)count, x));
  mxSetField(out, 0, "y", matrix((size_t)n, (size_t)count, y));
  mxFree(t);
  return out;
}

void mexFunction(int nlhs, mxArray* plhs[], int nrhs, const mxArray* prhs[]) {
  char command[16] = "", pair[16] = "";
  if (nlhs > 1 || nrhs < 3 || mxGetString(prhs[0], command, sizeof command) != 0)
    mexErrMsgIdAndTxt("tessarel:usage", "see help tessarel");
  enter();
  const int32_t n = select_fluid(prhs[1], prhs[2]);
  if (strcmp(command, "state") == 0 && nrhs == 6) {
    if (mxGetString(prhs[3], pair, sizeof pair) != 0) refuse("the pair of properties must be a text such as 'TP'");
    plhs[0] = states(n, pair, prhs[4], prhs[5]);
  } else if (strcmp(command, "critical") == 0 && nrhs == 3) {
    plhs[0] = critical();
  } else if (strcmp(command, "envelope") == 0 && nrhs == 3) {
    plhs[0] = envelope(n);
  } else {
    refuse("unknown command or wrong number of arguments: see help tessarel");
  }
  leave();
}
