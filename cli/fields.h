// Several texts as one, on their way from one process to another.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Any texts, each up to 4 GiB, as one.
std::string joinFields(const std::vector<std::string_view>& fields);

/// The texts that `joinFields` joined; nothing for any other bytes.
std::optional<std::vector<std::string>> splitFields(std::string_view bytes);

}  // namespace cli
