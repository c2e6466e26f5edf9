#pragma once

#include "cli/batch/BatchFiles.h"
#include "cli/batch/RecordCompletion.h"

#include <QtCore/QByteArray>

namespace cli {

/// Runs the lines of a batch on one presenter and writes an answer for each to standard output at once. Blank
/// lines count, but are passed over. Nothing is saved but by the operations that say so.
class BatchRunner
{
public:
    /// `files` carry the operations out, on records that `records` has completed. With `keepGoing` a line
    /// that was not carried out is complained about on standard error and the next one is run.
    BatchRunner(CQdDeConfigPresenter& presenter, BatchFiles& files, const RecordCompletion& records,
                bool keepGoing);

    /// Runs the next line. Without `keepGoing`, raises `Refusal` naming the line, after its answer, when the
    /// line is bad, refused or raises an error.
    void RunLine(const QByteArray& line);
    /// Raises `Refusal` when a line was not carried out.
    void Finish() const;

private:
    struct Answer
    {
        CString op;
        BatchResult result;
        CString error; ///< empty unless the line was bad or an error was raised
    };

    Answer Answered(const QByteArray& line);
    void Write(const Answer& answer) const;
    void Complain(const Answer& answer);

    CQdDeConfigPresenter& m_presenter;
    BatchFiles& m_files;
    const RecordCompletion& m_records;
    bool m_keepGoing;
    int m_line = 0;
    int m_failures = 0;
};

} // namespace cli
