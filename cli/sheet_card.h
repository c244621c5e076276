// What a contact sheet shows of one recording.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "cli/plugin_run.h"
#include "web/contact_sheet.h"

namespace cli {

/// Opens the recording with the plug-in and draws it small. The card has no name and no link; where
/// the recording cannot be drawn, only its problem.
web::Card cardOf(const std::filesystem::path& file, const PluginRunOptions& run);

/// A card as bytes, for another process.
std::string toBytes(const web::Card& card);

/// The card that `toBytes` wrote; nothing for any other bytes.
std::optional<web::Card> cardFromBytes(std::string_view bytes);

}  // namespace cli
