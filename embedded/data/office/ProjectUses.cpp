#include "embedded/data/office/ProjectUses.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CString ToText(const std::map<CString, CString>& libraries)
{
    QJsonObject object;
    for (const auto& [role, code] : libraries)
        object.insert(role, code);
    return CString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::map<CString, CString> LibrariesOf(const CString& text)
{
    std::map<CString, CString> libraries;
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    for (auto role = object.constBegin(); role != object.constEnd(); ++role)
        libraries.emplace(role.key(), role->toString());
    return libraries;
}

/// A text as a literal.
CString Quoted(CString text)
{
    return u'\'' + text.replace(u'\'', u"\'\'"_s) + u'\'';
}

} // namespace

void NoteProjectUse(Office& office, const ProjectUse& use)
{
    if (use.project.isEmpty()) return;
    // As values they would be prepared, asked with and forgotten: three messages. The function decides the
    // same, but calling one takes the server five times as long as looking, which is all that is mostly to be
    // done.
    const CString project = Quoted(use.project);
    const CString specialty = Quoted(use.specialty);
    const CString libraries = Quoted(ToText(use.libraries));
    Database& database = office.Connection();
    const CString known =
        u"SELECT count(*) FROM projects WHERE project = %1 AND specialty = %2 AND libraries = %3 AND "
        "at > clock_timestamp() - interval '1 day'"_s;
    if (database.Single(known.arg(project, specialty, libraries)).toInt() > 0) return;
    database.Single(u"SELECT note_project(%1, %2, %3)"_s.arg(project, specialty, libraries));
}

CArray<ProjectUse> ProjectUses(Database& office, const CString& butFor)
{
    CArray<ProjectUse> uses;
    office.ForEach(u"SELECT project, specialty, libraries::text, at FROM projects WHERE project <> ? "
                   "ORDER BY project"_s,
                   {butFor}, [&](const QSqlQuery& row) {
                       uses.append({row.value(0).toString(), row.value(1).toString(),
                                    LibrariesOf(row.value(2).toString()), row.value(3).toDateTime().toUTC()});
                   });
    return uses;
}

} // namespace embedded
