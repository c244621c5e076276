// A contact sheet: many drawings on one HTML page, each as a small picture with its facts.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace web {

/// What the sheet shows of one recording. Texts are UTF-8 and may hold any character.
struct Card {
  std::string name;
  std::string link;     ///< Where the recording lies, as a URL; empty: no link.
  std::string picture;  ///< A PNG; empty where the recording could not be drawn.
  int width = 0;        ///< Of the picture as it is shown, in pixels.
  int height = 0;
  std::string date;  ///< "2012-05-31 14:07"; empty where it is not known.
  int widthInMm = 0;
  int heightInMm = 0;
  std::size_t layers = 0;
  std::size_t strokes = 0;
  std::string problem;  ///< What is wrong with it; empty where it is sound.
};

/// One HTML page that works offline and loads nothing. Without scripts all cards are there; with
/// them they can be searched and sorted.
std::string contactSheet(const std::vector<Card>& cards, const std::string& title);

/// A path as a relative URL: what is neither a letter, a digit nor one of -._~/ is percent-encoded.
std::string urlOf(const std::string& path);

}  // namespace web
