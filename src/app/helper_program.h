// The programs of Tilora that run beside the resident one.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tilora::app {

/// Where the program `name` is: beside the running one, as it is built, or where it is installed.
QString helperPath(const QString& name);

/// How a helper ended.
struct HelperEnd {
  /// Nothing when it could not be started, crashed or was ended from outside.
  std::optional<int> status;
  QByteArray output;
  QByteArray errors;
};

/// Runs a program, one at a time. Main thread only.
class HelperProgram {
 public:
  explicit HelperProgram(QString path);
  HelperProgram(const HelperProgram&) = delete;
  HelperProgram& operator=(const HelperProgram&) = delete;
  /// Ends the program if it runs; nobody hears of that.
  ~HelperProgram();

  bool isRunning() const { return process_ != nullptr; }
  /// Starts the program, unless it runs, and later calls `ended` once; it is released then. With `patience`, a program that takes longer is
  /// ended.
  void run(const QStringList& arguments, std::function<void(const HelperEnd&)> ended,
           std::optional<std::chrono::milliseconds> patience = {});

 private:
  void end(std::optional<int> status);

  const QString path_;
  std::unique_ptr<QProcess> process_;
  std::function<void(const HelperEnd&)> ended_;
};

}  // namespace tilora::app
