#include "fluid/readers.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "fluid/bips.hpp"
#include "fluid/file_location.hpp"
#include "fluid/fluid_module.hpp"
#include "platform/byte_source.hpp"
#include "platform/fluid_database.hpp"

namespace tessarel::fluid_module {
namespace {

constexpr Message bad_place = "Place of a component must be 1 to 20...";

Message opening_failed(std::string_view filename) {
  static FixedText<320> message;
  message.assign("Error opening fluid data file of " + std::string(trimmed(filename)));
  return message.trimmed();
}

/// The file name without directory and extension, for messages on a record that has no name.
std::string_view stem(std::string_view filename) noexcept {
  filename = trimmed(filename);
  const auto separator = filename.find_last_of("/\\");
  if (separator != std::string_view::npos) filename.remove_prefix(separator + 1);
  return filename.substr(0, filename.rfind('.'));
}

/// A name that stays inside the fluid directory when it is made a file name.
bool is_plain_name(std::string_view name) noexcept {
  return !name.empty() && name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

}  // namespace

Message readfluidsfile(std::string_view filename, int i) {
  if (i < 0 || i >= nmax) return bad_place;
  platform::FileBytes file(filename);
  if (!file.is_open()) return opening_failed(filename);
  FileRows rows(file);
  return read_fluid_record(rows, i, stem(filename));
}

Message readfluidsdb(std::string_view fluiddb, std::string_view filename, int i) {
  if (i < 0 || i >= nmax) return bad_place;
  static sqlite::FluidData data;
  int status = 0;
  const int count = sqlite::getfluid(fluiddb, filename, data, status);
  if (count == 0 || status == 0) return opening_failed(filename);
  DatabaseRows rows(data, count);
  return read_fluid_record(rows, i, stem(filename));
}

Message readfluids_from(std::string_view directory, NameList fluids) {
  const std::string fluiddb(trimmed(directory));
  Message message = no_errors;
  const int n = std::min(record.n, nmax);
  for (int i = 0; i < n; ++i) {
    const std::string filename = std::string(fluids[i]) + ".saf";
    const PathText path(fluiddb + filename);
    if (!is_plain_name(fluids[i])) return opening_failed(path.view());
    message = readfluidsdb(fluiddb, filename, i);
    if (!ok(message)) message = readfluidsfile(path.view(), i);
    if (!ok(message)) return message;
  }
  return message;
}

Message readfluids(NameList fluids) {
  return readfluids_from(fluidpath(model_key).view(), fluids);
}

Message setfluid(int n, NameList fluids, const double* z) {
  n = std::max(n, 0);
  if (n > nmax) return "Number of components must not exceed 20...";
  if (n > 0 && (z == nullptr || !std::all_of(z, z + n, [](double x) { return std::isfinite(x); })))
    return "Mole fractions must be finite numbers...";
  record.n = n;
  std::copy_n(z, n, record.z.begin());
  Message message = readfluids(fluids);
  return ok(message) ? readbips() : message;
}

}  // namespace tessarel::fluid_module
