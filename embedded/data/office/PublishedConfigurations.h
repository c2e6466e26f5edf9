#pragma once

#include "embedded/data/office/Office.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>

#include <optional>
#include <utility>

namespace embedded {

/// Which version of a configuration: its number and the digest of its content (see `DigestOf`). Both, since
/// an office that was put back from a copy gives numbers again to other contents.
struct VersionMark
{
    /// None.
    VersionMark() = default;
    VersionMark(int theNumber, QByteArray theDigest) : number(theNumber), digest(std::move(theDigest)) {}

    int number = 0; ///< 0 for none
    QByteArray digest{};

    bool operator==(const VersionMark&) const = default;
};

/// One published state of a configuration. Versions count from 1 within a configuration; none is ever changed
/// or taken away.
struct PublishedVersion
{
    CString configuration;
    int number = 0;
    int base = 0;    ///< the version that its author began from; 0 for the first
    QDateTime at;    ///< the server's clock, UTC
    CString author;  ///< the user of the server
    CString project; ///< where it came from: the name of the project's folder
    CString note;
    qint64 size = 0;        ///< of the rule file, in bytes
    QByteArray digest;      ///< of the rule file (see `DigestOf`), to compare with a file without its content
    bool isRemoved = false; ///< whether the configuration has been removed since

    VersionMark Mark() const { return {number, digest}; }
};

/// A bill number that stands in a rule file and in no library: a project's own.
struct NumberUse
{
    CString library; ///< code of the bill library
    CString number;
    CString name;
    CString unit;
};

/// A number of mine that another project has taken for something else.
struct NumberCollision
{
    NumberUse mine;
    NumberUse theirs;
    CString project; ///< of the other one
};

struct Publication
{
    CString configuration;
    VersionMark base; ///< the version that the content was made from; none for what is to be new
    QByteArray content;
    CString note{};
    CString project{};   ///< where it comes from, for people
    CString projectId{}; ///< tells projects apart
    CArray<NumberUse> numbers{};
};

/// By what the office tells contents apart (SHA-256).
QByteArray DigestOf(const QByteArray& content);

struct PublishOutcome
{
    enum End {
        Published,
        Unchanged, ///< a version since the base has this content already: it is this publication sent again,
                   ///< or somebody has come to the same
        Newer,     ///< somebody has published since, or the office does not have the base: `version` is the
                   ///< last one; nothing has changed
        Missing,   ///< no such configuration, and the user may create none; or it has been removed
        Collides,  ///< see `collisions`; nothing has changed
    };
    End end = Published;
    /// The version that has the content, after `Published` and `Unchanged`: the base of what is made of the
    /// content from now on. Somebody may have published since. Else the last version; 0 when there is none.
    int version = 0;
    CArray<NumberCollision> collisions{};
};

/// The configurations that an office has published. `office` outlives this. All raise `Error` and what is
/// derived from it.
class PublishedConfigurations
{
public:
    /// The largest rule file that is published, in bytes.
    static constexpr qint64 LargestContent = qint64{256} << 20;

    explicit PublishedConfigurations(Office& office) : m_office(office) {}

    /// The last version of each configuration, in the order of the names; removed ones only when asked for.
    CArray<PublishedVersion> Latest(bool withRemoved = false);
    /// The last version of one; nothing when there is none of that name. Names differ by every character.
    std::optional<PublishedVersion> Last(const CString& configuration);
    /// All versions of one, the newest first.
    CArray<PublishedVersion> Log(const CString& configuration);
    /// The rule file of a version, checked against its digest. Nothing when there is no such version.
    std::optional<QByteArray> Content(const CString& configuration, int version);

    /// Publishes in one statement, so that either all of it is there or nothing. The server compares the base
    /// with the last version while it keeps other publications of that configuration waiting: nothing is ever
    /// replaced unseen. After an `UnansweredError` it may have happened or not; the same publication sent
    /// again then tells `Unchanged`. Raises `RightsError` for readers.
    PublishOutcome Publish(const Publication& publication);

    /// Removes a configuration from the list, or brings it back; its versions stay. Raise `RightsError` but
    /// for keepers, `Error` when there is none.
    void Remove(const CString& configuration);
    void BringBack(const CString& configuration);

private:
    void SetRemoved(const CString& configuration, bool removed);

    Office& m_office;
};

} // namespace embedded
