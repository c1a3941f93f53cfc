// The records that a session has read last, so that a selection reads again only what has changed on the disk.
#pragma once

#include <optional>
#include <string_view>

#include "fluid/component.hpp"
#include "platform/byte_source.hpp"

namespace tessarel::fluid {

class RecordMemory {
 public:
  /// Forgets all unless the fluid directory and the stamp of its database are those of the last call.
  void open(std::string_view directory, const platform::FileStamp& database);
  /// The record `filename` of that directory; null when it is not here or its file `path` has changed.
  [[nodiscard]] const Component* find(std::string_view filename, const char* path) const noexcept;
  /// Keeps a record that was read from the database, or from its file with the stamp `file` before the reading. The
  /// oldest one goes for it.
  void keep(std::string_view filename, const std::optional<platform::FileStamp>& file, const Component& component);

 private:
  struct Entry {
    FixedText<40> filename;  ///< blank in an empty entry; records of longer names are not kept
    bool of_file = false;
    platform::FileStamp stamp;
    Component component;
  };
  FixedText<256> directory_;
  platform::FileStamp database_;
  bool keeping_ = false;  ///< the database has not changed just now
  std::array<Entry, 2 * nmax> entries_;
  std::size_t next_ = 0;
};

}  // namespace tessarel::fluid
