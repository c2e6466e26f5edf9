#include "cli/batch/BatchRunner.h"

#include "cli/printing/Output.h"
#include "cli/printing/RuleJson.h"
#include "cli/reading/Failure.h"
#include "platform/Console.h"

using namespace Qt::StringLiterals;

namespace cli {

BatchRunner::BatchRunner(CQdDeConfigPresenter& presenter, BatchFiles& files, const RecordCompletion& records,
                         bool keepGoing)
    : m_presenter(presenter), m_files(files), m_records(records), m_keepGoing(keepGoing)
{
}

void BatchRunner::RunLine(const QByteArray& line)
{
    ++m_line;
    if (line.trimmed().isEmpty()) return;
    const Answer answer = Answered(line);
    Write(answer);
    if (!answer.result.ok) Complain(answer);
}

void BatchRunner::Finish() const
{
    if (m_failures > 0) throw Refusal(u"共 %1 行没有完成"_s.arg(m_failures));
}

BatchRunner::Answer BatchRunner::Answered(const QByteArray& line)
{
    Answer answer;
    try {
        const QJsonObject object = ParseBatchLine(line);
        answer.op = BatchOperationName(object);
        const BatchOperation* operation = FindBatchOperation(answer.op);
        if (operation == nullptr) throw BadLine(u"没有操作“%1”"_s.arg(answer.op));
        BatchRequest request = ReadBatchRequest(object, operation->keys);
        m_records.Complete(request);
        answer.result = m_files.Run(*operation, m_presenter, request);
    } catch (const std::exception& error) {
        answer.error = CString::fromUtf8(error.what());
    }
    return answer;
}

void BatchRunner::Write(const Answer& answer) const
{
    JsonWriter json(JsonWriter::Style::OneLine);
    json.BeginObject();
    json.Key(u"line").Number(m_line);
    json.Key(u"op").Text(answer.op);
    json.Key(u"ok").Bool(answer.result.ok);
    if (!answer.error.isEmpty()) json.Key(u"error").Text(answer.error);
    if (answer.result.newId) json.Key(u"newId").Number(*answer.result.newId);
    if (answer.result.indexes) {
        json.Key(u"indexes").BeginArray();
        for (const CString& index : *answer.result.indexes)
            json.Text(index);
        json.EndArray();
    }
    if (answer.result.rules) {
        json.Key(u"rules");
        WriteRules(json, *answer.result.rules);
    }
    json.EndObject();
    try {
        WriteText(json.Result());
    } catch (const NobodyListens&) {
        // What a script changes depends on how far it came, so its end is not silent.
        throw Refusal(u"第 %1 行之后没有再做下去：标准输出写不进去"_s.arg(m_line));
    } catch (const Refusal& refusal) {
        throw Refusal(u"第 %1 行之后没有再做下去：%2"_s.arg(m_line).arg(CString::fromUtf8(refusal.what())));
    }
}

void BatchRunner::Complain(const Answer& answer)
{
    ++m_failures;
    CString complaint = u"第 %1 行"_s.arg(m_line);
    if (!answer.op.isEmpty()) complaint += u" "_s + answer.op;
    complaint += u"："_s + (answer.error.isEmpty() ? u"被拒绝：路径所指的对象不存在，或者这里不能做这个操作"_s
                                                   : answer.error);
    if (!m_keepGoing) throw Refusal(complaint);
    platform::WriteErr(complaint + u'\n');
}

} // namespace cli
