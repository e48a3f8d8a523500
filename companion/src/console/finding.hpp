// SPDX-License-Identifier: Apache-2.0
// What a console line tells, as typed values: whoever takes them never looks at text again. Views
// hold until the next line is read.
#pragma once

#include "console/figures.hpp"
#include "model/causes.hpp"
#include "model/modes.hpp"
#include "model/phases.hpp"
#include "model/sub_causes.hpp"

#include <string_view>
#include <variant>

namespace wivex::report {

// ---- Texts of the tool: the start of a run

struct RunBegins {
    std::string_view build;
};
/// Said before the first iteration.
struct Starting {};

// ---- Texts of the tool: what they say of the device and its configuration

struct SingleIteration {};
struct ConfigFile {
    /// Empty when it could not be read.
    std::string_view path;
};
struct UnknownKey {
    std::string_view key;
};
struct ChipType {
    int type;
};
/// Both empty when the line says something else.
struct ChipIds {
    std::string_view vendor;
    std::string_view product;
};
struct KernelMac {
    std::string_view address;
};
struct ChipMac {
    std::string_view address;
};
struct MacPair {
    std::string_view kernel;
    std::string_view chip;
};
struct OwnAddress {
    std::string_view address;
};

using Fact = std::variant<SingleIteration, ConfigFile, UnknownKey, ChipType, ChipIds, KernelMac,
                          ChipMac, MacPair, OwnAddress>;

// ---- Texts of the tool: the course of an iteration

/// The phase of the text is under way (`Verdict::none`) or has this verdict.
struct Step {
    Verdict verdict;
};
/// Stands behind the line of an absent module.
struct ModuleHint {};
struct LoopbackStatus {
    /// The driver left it as it was sent.
    bool untouched;
};
struct SessionTrouble {};
struct ConnectionClosed {
    /// Not by the clean-up at the end of a run.
    bool by_mode;
};
/// The network of the configuration is in the scan listing, or is not.
struct NetworkNamed {
    std::string_view ssid;
};
struct PeerFound {};
struct RoleTold {
    bool is_owner;
};
struct GroupRemoved {};
struct GroupStarted {};
struct ClientConnected {};
struct ModePassed {};
struct IperfDone {};
/// So many names of access points follow.
struct NamesFollow {
    long count;
};
/// Names with this prefix follow.
struct MatchesFollow {
    std::string_view prefix;
};

using CourseEvent = std::variant<Step, ModuleHint, LoopbackStatus, SessionTrouble, ConnectionClosed,
                                 PeerFound, RoleTold, GroupRemoved, GroupStarted, ClientConnected,
                                 ModePassed, IperfDone, NamesFollow, MatchesFollow, NetworkNamed>;

// ---- Texts of the tool: how a run ends

struct NotStarted {};
struct SoftapEnd {
    std::string_view line;
};
struct Interrupted {};
/// Only an interrupt leads here, also when its own line was lost.
struct AfterInterrupt {};
struct Killed {};
struct ResultsLost {
    std::string_view line;
};
struct ResultPath {
    std::string_view path;
};
struct ResultUnwritable {
    std::string_view line;
    std::string_view path;
};
struct ResultWritten {
    std::string_view path;
    /// The line is whole; a part of it announces nothing.
    bool announced;
};
struct RunOver {};
struct CleanedUp {};
struct Done {};

using Ending = std::variant<NotStarted, SoftapEnd, Interrupted, AfterInterrupt, Killed, ResultsLost,
                            ResultPath, ResultUnwritable, ResultWritten, RunOver, CleanedUp, Done>;

/// `std::monostate`: nothing, but it is the tool's own.
using Told = std::variant<std::monostate, RunBegins, Starting, Fact, CourseEvent, Ending>;

struct ToolText {
    Phase phase = Phase::none;
    Cause cause = Cause::none;
    /// The mode that alone prints this text; `Mode::unknown` when several do.
    Mode mode = Mode::unknown;
    /// Only the tool prints it: it shows a run even where none was seen to begin.
    bool is_unmistakable = false;
    /// Shows that the console carries the tool's standard error.
    bool on_standard_error = false;
    Told told;
};

// ---- Other lines

/// The name of an access point in the list of a scan.
struct ListedName {
    std::string_view ssid;
    /// Not listed before in this run.
    bool is_fresh = false;
};

/// A line that can only be one of the tool, and that nobody has told this program about.
struct UnknownText {
    std::string_view line;
    bool shows_run = false;
};

/// The supplicant tells that it is connected to this access point.
struct Connected {
    std::string_view bssid;
};

/// A line of another program; it may tell what lies behind a failure.
struct OtherLine {
    SubCause sub_cause = SubCause::none;
};

using Finding = std::variant<ToolText, ListedName, TrafficFigure, ListedAccessPoint, Connected,
                             UnknownText, OtherLine>;

} // namespace wivex::report
