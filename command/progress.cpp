#include "command/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <utility>

#include "command/errors.h"
#include "command/json.h"

namespace nevrel {
namespace {

using std::chrono::milliseconds;

constexpr int failureStatus = 1;

std::string Fixed(double number, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
    return text.data();
}

/// Hours, minutes and seconds, as 1:02:03 or 0:09.
std::string Duration(double seconds) {
    const auto whole = std::lround(seconds);
    std::array<char, 32> text{};
    if (whole >= 3600) {
        std::snprintf(text.data(), text.size(), "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60,
                      whole % 60);
    } else {
        std::snprintf(text.data(), text.size(), "%ld:%02ld", whole / 60, whole % 60);
    }
    return text.data();
}

std::string TimesText(const StageTimes& times) {
    std::string text;
    double sum = 0;
    for (std::size_t i = 0; i < stageNames.size(); ++i) {
        text += std::string(stageNames[i]) + " " + Fixed(times.seconds[i] * 1000, 1) + ", ";
        sum += times.seconds[i];
    }
    return text + "in all " + Fixed(sum * 1000, 1) + " ms";
}

double Sum(const StageTimes& times) {
    double sum = 0;
    for (const double seconds : times.seconds) sum += seconds;
    return sum;
}

std::string VerdictName(Outcome::Verdict verdict) {
    switch (verdict) {
        case Outcome::Verdict::Done:
            return "done";
        case Outcome::Verdict::Skipped:
            return "skipped";
        default:
            return "failed";
    }
}

std::size_t TerminalWidth() {
    winsize size{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

/// The front of a text in UTF-8, without a part of a character at its end. No character has more
/// columns than bytes.
std::string Shortened(const std::string& text, std::size_t bytes) {
    if (text.size() <= bytes) return text;
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80) --bytes;
    return text.substr(0, bytes);
}

}  // namespace

ProgressStyle ParseProgressStyle(const std::string& name) {
    if (name.empty() || name == "auto")
        return isatty(STDERR_FILENO) != 0 ? ProgressStyle::Line : ProgressStyle::Plain;
    if (name == "plain") return ProgressStyle::Plain;
    if (name == "json") return ProgressStyle::Json;
    if (name == "openjd") return ProgressStyle::OpenJd;
    throw UsageError("--progress: '" + name + "' is not auto, plain, json or openjd");
}

Progress::Progress(const ProgressSettings& settings, std::size_t total, const Complain& complain)
    : settings_(settings), total_(total), complain_(complain) {}

void Progress::add(const PicturePaths& paths, const Outcome& outcome) {
    using Verdict = Outcome::Verdict;
    const std::lock_guard lock(mutex_);
    ++(outcome.verdict == Verdict::Done      ? done_
       : outcome.verdict == Verdict::Skipped ? skipped_
                                             : failed_);
    mayPass_ = mayPass_ || outcome.verdict == Verdict::FailedForAWhile;
    for (std::size_t i = 0; i < times_.seconds.size(); ++i)
        times_.seconds[i] += outcome.times.seconds[i];
    std::vector<std::string> lines = outcome.lines;
    if (settings_.quiet && outcome.succeeded()) lines.clear();
    const std::string way = paths.input.string() + " -> " + paths.output.string();
    if (settings_.verbose && outcome.verdict == Verdict::Done)
        lines.push_back(way + ": " + Fixed(Sum(outcome.times), 3) + " s");
    if (settings_.verbose && outcome.verdict == Verdict::Skipped)
        lines.push_back(way + ": is there already");
    if (settings_.timings && outcome.verdict == Verdict::Done)
        lines.push_back(paths.input.string() + ": " + TimesText(outcome.times));
    if (!lines.empty()) clearLine();
    for (const std::string& line : lines) complain_(OneLine(line));
    if (settings_.style == ProgressStyle::Json) tellJson(paths, outcome);
    if (settings_.style == ProgressStyle::OpenJd) tellOpenJd(paths, outcome);
    if (settings_.quiet || total_ == 1) return;
    if (settings_.style == ProgressStyle::Line)
        showLine(counts() + pace() + ", " + paths.input.string());
    if (settings_.style == ProgressStyle::Plain) tellPlain();
}

void Progress::finish() {
    const std::lock_guard lock(mutex_);
    clearLine();
    if (settings_.timings && done_ > 1)
        complain_("all " + std::to_string(done_) + ": " + TimesText(times_));
    const bool wasTold = lastTold_ || skipped_ > 0 || finished() < total_;
    if (!settings_.quiet && total_ > 1 && wasTold)
        complain_(counts() + " in " + Duration(seconds()));
    if (settings_.style == ProgressStyle::Json) {
        std::cout << "{\"done\":" << done_ << ",\"skipped\":" << skipped_
                  << ",\"failed\":" << failed_ << ",\"total\":" << total_
                  << ",\"seconds\":" << Fixed(seconds(), 3) << "}\n"
                  << std::flush;
    }
}

void Progress::interrupt(const std::string& advice) {
    const std::lock_guard lock(mutex_);
    clearLine();
    complain_("interrupted: " + counts() + advice);
}

int Progress::status() const {
    if (failed_ == 0) return 0;
    return mayPass_ ? tryAgainStatus : failureStatus;
}

void Progress::showLine(const std::string& text) {
    constexpr milliseconds pause(100);
    const auto now = Clock::now();
    if (lastTold_ && now - *lastTold_ < pause && finished() < total_) return;
    lastTold_ = now;
    const std::string line = "\r\x1B[K" + Shortened(Printable(text), TerminalWidth() - 1);
    lineShown_ = write(STDERR_FILENO, line.data(), line.size()) > 0;
}

void Progress::clearLine() {
    if (std::exchange(lineShown_, false)) static_cast<void>(!write(STDERR_FILENO, "\r\x1B[K", 4));
}

void Progress::tellPlain() {
    constexpr milliseconds pause(5000);
    const auto now = Clock::now();
    if (now - lastTold_.value_or(start_) < pause || finished() == total_) return;
    lastTold_ = now;
    complain_(counts() + pace());
}

void Progress::tellJson(const PicturePaths& paths, const Outcome& outcome) const {
    std::cout << "{\"input\":" << JsonString(paths.input.string())
              << ",\"output\":" << JsonString(paths.output.string())
              << ",\"status\":" << JsonString(VerdictName(outcome.verdict));
    if (!outcome.succeeded()) std::cout << ",\"error\":" << JsonString(Join(outcome.lines));
    std::cout << ",\"seconds\":" << Fixed(Sum(outcome.times), 4) << ",\"finished\":" << finished()
              << ",\"total\":" << total_ << "}\n"
              << std::flush;
}

void Progress::tellOpenJd(const PicturePaths& paths, const Outcome& outcome) const {
    const double percent = 100.0 * static_cast<double>(finished()) / static_cast<double>(total_);
    std::cout << "openjd_progress: " << Fixed(percent, 1) << "\nopenjd_status: " << counts()
              << "\n";
    if (!outcome.succeeded())
        std::cout << "openjd_fail: " << Printable(paths.input.string()) << " failed\n";
    std::cout << std::flush;
}

double Progress::seconds() const {
    return std::chrono::duration<double>(Clock::now() - start_).count();
}

std::string Progress::counts() const {
    std::string text = std::to_string(done_) + " of " + std::to_string(total_) + " done";
    if (skipped_ > 0) text += ", " + std::to_string(skipped_) + " there already";
    if (failed_ > 0) text += ", " + std::to_string(failed_) + " failed";
    return text;
}

std::string Progress::pace() const {
    const std::size_t worked = done_ + failed_;
    if (worked == 0) return "";
    const double rate = static_cast<double>(worked) / seconds();
    const double left = static_cast<double>(total_ - finished()) / rate;
    return ", " + Fixed(rate, 1) + " a second, " + Duration(left) + " left";
}

}  // namespace nevrel
