#include "fluid/file_location.hpp"

#include <cstddef>
#include <string>

#include "platform/byte_source.hpp"
#include "platform/file_search.hpp"
#include "platform/module_path.hpp"

namespace tessarel::fluid {
namespace {

/// `path` up to and including its last separator; empty where none stands at position 3 or later, counted from 1.
std::string_view up_to_separator(std::string_view path) noexcept {
  const auto last = path.find_last_of("/\\");
  return last == std::string_view::npos || last + 1 < 3 ? std::string_view{} : path.substr(0, last + 1);
}

PathText library_file(std::string_view name) {
  PathText path;
  platform::get_module_file_name(platform::get_module_handle(name), path.data(), PathText::size());
  return path;
}

}  // namespace

PathText module_directory(std::string_view file) {
  const std::string_view directory = up_to_separator(trimmed(file));
  return directory.empty() ? fallback_directory : directory;
}

PathText fluid_directory(std::string_view file) {
  file = trimmed(file);
  const auto last = file.find_last_of("/\\");
  if (last == std::string_view::npos) return fallback_directory;
  // The separator before the last one decides, the last one only where it is alone.
  const auto before = last == 0 ? std::string_view::npos : file.find_last_of("/\\", last - 1);
  const std::string_view parent =
      up_to_separator(file.substr(0, (before == std::string_view::npos ? last : before) + 1));
  return parent.empty() ? PathText(fallback_directory) : PathText(std::string(parent) + "fluids/");
}

PathText modulepath(std::string_view name) {
  return module_directory(library_file(name).view());
}

PathText fluidpath(std::string_view name) {
  return fluid_directory(library_file(name).view());
}

namespace {

bool is_there(const std::string& path) {
  return platform::stamp_of(path.c_str()).exists();
}

DataPlace in_directory(std::string directory) {
  if (directory.back() != '/') directory += '/';
  const std::string beside = directory + "lib/";
  const bool installed = !is_there(directory + std::string(bips_file)) && is_there(beside + std::string(bips_file));
  return {directory + "fluids/", installed ? beside : directory};
}

}  // namespace

bool has_data(std::string_view directory) {
  const DataPlace place = in_directory(std::string(trimmed(directory)));
  return is_there(place.fluids) && is_there(place.tables + std::string(bips_file));
}

DataPlace data_place(std::string_view directory) {
  std::string given(trimmed(directory));
  if (given.empty()) given = platform::environment("TESSAREL_DATA");
  if (!given.empty()) return in_directory(given);
  const std::string library(library_file(model_key).trimmed());
  const auto beside = [](const std::string& file) {
    return DataPlace{std::string(fluid_directory(file).trimmed()), std::string(module_directory(file).trimmed())};
  };
  DataPlace usual = beside(library);
  const auto has_table = [](const DataPlace& place) { return is_there(place.tables + std::string(bips_file)); };
  if (has_table(usual)) return usual;
  for (const std::string& file : {library, platform::real_path(library)}) {
    if (file.empty()) continue;
    if (DataPlace real = beside(file); has_table(real)) return real;
    if (DataPlace shared = in_directory(std::string(module_directory(file).trimmed()) + "../share/tessarel/");
        has_table(shared))
      return shared;
  }
  return usual;
}

void searchdirectory(std::string_view directory, std::string_view pattern, FileList& list) {
  platform::FindData data;
  const std::string path = std::string(trimmed(directory)) + std::string(trimmed(pattern));
  const platform::SearchHandle handle = platform::find_first_file(path, data);
  list.fill(PathText{});
  if (handle == nullptr) return;
  std::size_t count = 0;
  do {
    list[count++] = data.name;
  } while (count < list.size() && platform::find_next_file(handle, data));
}

}  // namespace tessarel::fluid
