#pragma once

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/LibraryContents.h"
#include "embedded/data/project/NumberRegister.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProposedNumbers.h"
#include "embedded/data/project/RuleNumbers.h"
#include "host/Roles.h"

#include <QtCore/QSet>

#include <map>

namespace embedded {

/// The libraries that the project uses, what they hold, and the project's history of bill items: those with
/// which it started and those of its rule files. Of a catalogue's libraries only those in use are in memory.
/// `catalogue` and `project` must outlive this, and so must a register.
class LibrariesInUse : public host::ILibraries
{
public:
    /// `ruleFolder` is the path text of the folder of the rule files, `numbers` the register that the project
    /// shares with others, if any. Raises `Error` when the catalogue lacks a library of the settings.
    LibrariesInUse(Database& catalogue, ProjectDatabase& project, const ProjectDatabase::Settings& settings,
                   const CString& ruleFolder, NumberRegister* numbers = nullptr);

    CString GetQdCode() override { return InUse(LibraryRole::Bill).name.code; }
    CString GetDeCode() override { return InUse(LibraryRole::Quota).name.code; }
    CString GetQdDeCode() override { return InUse(LibraryRole::QuotaOfBills).name.code; }
    CString GetQdFileName() override { return InUse(LibraryRole::Bill).name.name; }
    CString GetDeFileName() override { return InUse(LibraryRole::Quota).name.name; }
    CString GetQdDeFileName() override { return InUse(LibraryRole::QuotaOfBills).name.name; }
    CString GetQdLocal() override { return InUse(LibraryRole::Bill).name.local; }
    CString GetDeLocal() override { return InUse(LibraryRole::Quota).name.local; }
    CString GetQdDeLocal() override { return InUse(LibraryRole::QuotaOfBills).name.local; }
    CString GetDeYear() override { return InUse(LibraryRole::Quota).name.year; }
    CString GetQdDeYear() override { return InUse(LibraryRole::QuotaOfBills).name.year; }
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    /// Only items of the bill library in use: those of the project's start and of its rule files, the
    /// numbers that may have been taken since (see `ProposedNumbers`), and those of the register, where what
    /// may now be proposed is claimed. In the order of their numbers, each once.
    /// True with an empty list for a number without history; false when the history cannot be read. A rule
    /// file that cannot be read is passed over.
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) override;

    /// To be called when the rules of every dialog have been written or dropped: their numbers are those of
    /// the rule files then.
    void ForgetProposedNumbers();

    CArray<LibraryName> Of(LibraryRole role) const { return NamesOf(m_shelf.libraries, role); }
    /// See `EmbeddedHost::BillNumbersOf`.
    QSet<CString> BillNumbersOf(const CString& library) const;
    const Library& InUse(LibraryRole role) const { return m_shelf.inUse.at(role); }
    /// What the bill library and the quota library of the mode hold. Another mode or library makes it
    /// something else; the object stays.
    const LibraryContents& Contents() const noexcept { return m_shelf.contents; }

    /// Use another library or another mode's quota library, and store the library or the mode in the project.
    /// Raise `Error` when there is none, when it cannot be read, or when the project cannot be written;
    /// nothing has changed then.
    void SetLibrary(LibraryRole role, const CString& code);
    void SetMode(SQdDeInfo::EQdDeMode mode);

private:
    /// The catalogue's libraries, those in use, and what they hold.
    struct Shelf
    {
        CArray<Library> libraries;
        std::map<LibraryRole, Library> inUse;
        LibraryContents contents;
    };

    Shelf Read(const ProjectDatabase::Settings& settings);
    void Use(Shelf shelf, SQdDeInfo::EQdDeMode mode);
    /// The coding rule of the bill library in use; nothing when there is none.
    std::optional<host::BillNumbering> Numbering() const;
    /// Claims what may be proposed for a base number, and brings into `told` what others have taken by then.
    void Claim(const CString& base, CArray<SQdInfo>& told);
    /// What this is set to now.
    ProjectDatabase::Settings Current() const;

    Database& m_catalogue;
    ProjectDatabase& m_project;
    NumberRegister* m_numbers;
    RuleNumbers m_ruleNumbers;
    ProposedNumbers m_proposed;
    SQdDeInfo::EQdDeMode m_mode = SQdDeInfo::BillMode;
    Shelf m_shelf;
    QHash<CString, const SQdInfo*> m_bills;
};

} // namespace embedded
