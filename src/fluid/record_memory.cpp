#include "fluid/record_memory.hpp"

namespace tessarel::fluid {

void RecordMemory::open(std::string_view directory, const platform::FileStamp& database) {
  keeping_ = !database.exists() || database.settled();
  if (same_text(directory_.view(), directory) && database_ == database) return;
  for (Entry& entry : entries_) entry.filename.assign({});
  directory_.assign(directory);
  database_ = database;
}

const Component* RecordMemory::find(std::string_view filename, const char* path) const noexcept {
  filename = trimmed(filename);
  for (const Entry& entry : entries_)
    if (entry.filename.trimmed() == filename)
      return !entry.of_file || platform::stamp_of(path) == entry.stamp ? &entry.component : nullptr;
  return nullptr;
}

void RecordMemory::keep(std::string_view filename, const std::optional<platform::FileStamp>& file,
                        const Component& component) {
  filename = trimmed(filename);
  if (!keeping_ || filename.size() > FixedText<40>::size() || (file && !file->settled())) return;
  for (Entry& entry : entries_)
    if (entry.filename.trimmed() == filename) entry.filename.assign({});
  entries_[next_] = {filename, file.has_value(), file.value_or(platform::FileStamp{}), component};
  next_ = (next_ + 1) % entries_.size();
}

}  // namespace tessarel::fluid
