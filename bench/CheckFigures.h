#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace bench {

/// Checking rule files from the disk to the findings, against opening the same files. Each prints its line
/// and tells whether the bar is met. Needs the embedded host on the project in a folder; `folder` takes the
/// files.

/// One category of 5,000 rules on six attributes: 4,800 that share out all components among them, and 200
/// behind them that six of these hide together. Then this category alone, without reading it.
bool Check(const QString& folder, const QString& project, int rounds);

/// The file with that category: 给排水\管道\给水管.
QByteArray ManyRules();

/// The three sample configurations that every project can be made with.
bool CheckSample(const QString& folder, const QString& project, int rounds);

} // namespace bench
