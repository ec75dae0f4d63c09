#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace plexoras {

/// The bytes of the file at `path`, read in one go; pipes are read to their end.
///
/// Error 53 when there is no such file, 75 when it cannot be read or is a directory; both name the path.
std::string read_file(const std::string& path);

/// Gives the same bytes to `take`, piece by piece, and holds one piece at a time. What `take` raises comes through.
void read_file_pieces(const std::string& path, const std::function<void(std::string_view)>& take);

/// Makes `bytes` the content of the file at `path`, so that a crash leaves the old content or the new one.
///
/// The bytes are written to a temporary file `.NAME.plexoras-XXXXXX` in the same directory, synced to the disk, and
/// renamed to `path`. An existing file keeps its permissions; a new one gets those of the process. When `path` is
/// a symbolic link, the file that it points at is replaced and the link stays.
///
/// Error 75 with the path and the system's reason when that fails: the old content is then still there and no
/// temporary file is left. Only a failure to sync the directory comes after the new content is in place.
/// A file without write permission is refused, and so is whatever is not a regular file. The directory must exist.
void replace_file(const std::string& path, std::string_view bytes);

}  // namespace plexoras
