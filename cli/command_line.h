// The command line of penwick: every command and its options.
#pragma once

#include <variant>

#include "cli/check_words.h"
#include "cli/convert_words.h"
#include "cli/info_words.h"
#include "cli/ink_words.h"
#include "cli/open_words.h"
#include "cli/packets_words.h"
#include "cli/report.h"
#include "cli/rescue_words.h"
#include "cli/sheet_words.h"
#include "cli/view_words.h"

namespace cli {

/// The words of one command. A command has a struct of words with a function `run` in files of its
/// own, its place here, and the declaration of its options in command_line.cpp.
using CommandWords = std::variant<OpenWords, InkWords, ConvertWords, RescueWords, InfoWords,
                                  CheckWords, PacketsWords, SheetWords, ViewWords>;

/// The command that is asked for with its words. Where there is nothing left to do, the exit
/// status: help or the version was printed, or wrong usage reported. `words` is what `main` takes.
std::variant<CommandWords, ExitStatus> parseCommandLine(int count, char** words);

}  // namespace cli
