// A page that shows what the effect does to pictures.
#pragma once

#include <filesystem>

#include "command/smooth_picture.h"

namespace nevrel {

/// Smooths the pictures and writes a page with them before and after, and with their edges, which
/// needs nothing but a browser. Pictures that fail are told of and left out. Returns the exit
/// status as Progress gives it. Throws PictureError when the page cannot be written.
int MakeReport(host_kit::Instance& instance, const SmoothSettings& settings, const RunSettings& run,
               const PictureList& pictures, const std::filesystem::path& page,
               const Complain& complain);

}  // namespace nevrel
