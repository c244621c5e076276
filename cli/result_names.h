// The names of results.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/input_list.h"

namespace cli {

/// A name for the result of every input, relative to the folder for the results, with what comes
/// behind it in `ends`, such as ".svg": the name of the input in the folders below the one that was
/// named. No two are equal: inputs of one folder that differ only in their endings keep these where
/// their results would not (a.pnx.svg), and inputs of different folders keep those below the one
/// that they have in common (2019/a.svg, 2020/a.svg). What else exists has no influence.
std::vector<std::filesystem::path> nameResults(const std::vector<Input>& inputs,
                                               const std::vector<std::filesystem::path>& ends);

}  // namespace cli
