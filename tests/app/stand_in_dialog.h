// A dialog that answers by itself.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace tilora::app {

/// A stand-in for the consent dialog: a shell script in a folder of its own.
class StandInDialog {
 public:
  explicit StandInDialog(const QString& script) {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script.toUtf8() + "\n");
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  }
  QString path() const { return folder_.filePath(QStringLiteral("dialog")); }
  QString fileBeside(const QString& name) const { return folder_.filePath(name); }

 private:
  QTemporaryDir folder_;
};

}  // namespace tilora::app
