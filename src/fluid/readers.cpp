#include "fluid/readers.hpp"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "fluid/bips.hpp"
#include "fluid/file_location.hpp"
#include "platform/byte_source.hpp"

namespace tessarel::fluid {
namespace {

constexpr Message bad_place = "Place of a component must be 1 to 20...";

Message opening_failed(std::string_view filename, FailureText& text) {
  text.assign("Error opening fluid data file of " + std::string(trimmed(filename)));
  return Message::of(text.trimmed());
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

Message readfluidsfile(std::string_view filename, int i, Parameters& p, FailureText& text) {
  if (i < 0 || i >= nmax) return bad_place;
  platform::FileBytes file(filename);
  if (!file.is_open()) return opening_failed(filename, text);
  FileRows rows(file);
  return read_fluid_record(rows, i, stem(filename), p, text);
}

Message readfluidsdb(std::string_view fluiddb, std::string_view filename, int i, Parameters& p, Sources& sources) {
  if (i < 0 || i >= nmax) return bad_place;
  const auto data = std::make_unique_for_overwrite<platform::FluidData>();
  int status = 0;
  const int count = sources.database.getfluid(fluiddb, filename, *data, status);
  if (count == 0 || status == 0) return opening_failed(filename, sources.text);
  DatabaseRows rows(*data, count);
  return read_fluid_record(rows, i, stem(filename), p, sources.text);
}

Message readfluids_from(std::string_view directory, NameList fluids, Parameters& p, Sources& sources) {
  const std::string fluiddb(trimmed(directory));
  Message message = no_errors;
  const int n = std::min(p.n, nmax);
  std::optional<platform::FluidDatabase::SharedReads> reads;
  sources.records.open(fluiddb, platform::stamp_of(platform::database_file(fluiddb).c_str()));
  for (int i = 0; i < n; ++i) {
    const std::string filename = std::string(fluids[i]) + ".saf";
    const PathText path(fluiddb + filename);
    if (!is_plain_name(fluids[i])) return opening_failed(path.view(), sources.text);
    const std::string file(path.trimmed());
    if (const Component* known = sources.records.find(filename, file.c_str())) {
      known->put(p, at(i));
      continue;
    }
    if (n > 1 && !reads) reads.emplace(sources.database, fluiddb);
    std::optional<platform::FileStamp> stamp;
    message = readfluidsdb(fluiddb, filename, i, p, sources);
    if (!ok(message)) {
      stamp = platform::stamp_of(file.c_str());
      message = readfluidsfile(path.view(), i, p, sources.text);
    }
    if (!ok(message)) return message;
    sources.records.keep(filename, stamp, Component(p, at(i)));
  }
  return message;
}

Message readfluids(NameList fluids, Parameters& p, Sources& sources) {
  return readfluids_from(data_place(sources.directory.view()).fluids, fluids, p, sources);
}

}  // namespace tessarel::fluid
