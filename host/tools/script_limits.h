#pragma once

#include <QString>

#include <optional>

class QJSEngine;
class QJSValue;

/// What bounds a custom script.
namespace tools {

constexpr int DefaultTimeLimit = 10000;                // milliseconds of a call
constexpr long long MostMemory = 1024LL * 1024 * 1024; // bytes that the program may gain
constexpr int LongestText = 16 * 1024 * 1024;          // characters that a step may return

/// The time limit of a call as the environment gives it, in milliseconds, 0 for none; empty when what it
/// gives is no time, which badTimeLimit() tells.
[[nodiscard]] std::optional<int> timeLimitOfEnvironment();
[[nodiscard]] QString badTimeLimit();

/// A function that calls `exportStep` and gives what it returns, but throws when that is a text of more than
/// LongestText characters, which is then not copied out of the engine.
[[nodiscard]] QJSValue withBoundedText(QJSEngine & engine, const QJSValue & exportStep);

} // namespace tools
