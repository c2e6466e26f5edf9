#include "SmallHost.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

namespace {

/// Sets attributes in the start tag of the document element; enough for files that the module has written.
class TextXmlTool : public host::IXmlTool
{
public:
    bool CreateDOMObj() override { return true; }
    bool OpenXml(const CString& path) override
    {
        QFile file(QDir::fromNativeSeparators(QString(path).replace(u'\\', u'/')));
        if (!file.open(QIODevice::ReadOnly)) return false;
        m_text = QString::fromUtf8(file.readAll());
        return m_text.startsWith(u'<');
    }
    bool SelectNode(const CString& name) override
    {
        const auto start = m_text.indexOf(u'<' + name);
        if (start < 0) return false;
        m_behindName = start + 1 + name.size();
        return true;
    }
    bool SetAttribute(const CString& name, const CString& value) override
    {
        m_text.insert(m_behindName, QStringLiteral(" %1=\"%2\"").arg(name, value.toHtmlEscaped()));
        return true;
    }
    bool SaveXml(const CString& path) override
    {
        QFile file(QString(path).replace(u'\\', u'/'));
        return file.open(QIODevice::WriteOnly) && file.write(m_text.toUtf8()) > 0;
    }

private:
    QString m_text;
    qsizetype m_behindName = 0;
};

/// A picker without a window.
class NoPicker : public host::IBillPicker
{
public:
    bool Create(CWnd*) override { return true; }
    bool IsVisible() const override { return false; }
    void Show(bool) override {}
    void EnableContent(bool) override {}
    void MoveWndToRight(CWnd*) override {}
    void InitData() override {}
    void SetShowGetQdNumDlg(bool) override {}
    void SetTreePosition(const CString&) override {}
};

} // namespace

host::Roles SmallHost::Roles()
{
    return {this, this, this, this, this, this, this, this};
}

bool SmallHost::SpecNameToId(const CString& name, SNvKtSpecId& id)
{
    id = GetCurrentSpecId();
    return name == GetCurrentSpec();
}

bool SmallHost::BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id)
{
    id = {QStringLiteral("1"), QStringLiteral("11")};
    return fullName == QStringLiteral("给排水\\管道");
}

bool SmallHost::SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id)
{
    id = {QStringLiteral("1"), QStringLiteral("11"), QStringLiteral("111")};
    return fullName == QStringLiteral("给排水\\管道\\给水管");
}

bool SmallHost::GetAllSpecNames(CStringArray& names)
{
    names = {GetCurrentSpec()};
    return true;
}

bool SmallHost::GetAllBigCategoryIdsBySpec(const SNvKtSpecId&, CArray<SNvKtBigCategoryId>& ids)
{
    ids = {{QStringLiteral("1"), QStringLiteral("11")}};
    return true;
}

bool SmallHost::GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId&,
                                                    CArray<SNvKtSmallCategoryId>& ids)
{
    ids = {{QStringLiteral("1"), QStringLiteral("11"), QStringLiteral("111")}};
    return true;
}

bool SmallHost::GetBigCategoryName(const SNvKtBigCategoryId&, CString& name)
{
    name = QStringLiteral("管道");
    return true;
}

bool SmallHost::GetSmallCategoryName(const SNvKtSmallCategoryId&, CString& name)
{
    name = QStringLiteral("给水管");
    return true;
}

bool SmallHost::GetAttributeList(const SNvKtSmallCategoryId&, CStringArray& list)
{
    list = {QStringLiteral("基本"), QStringLiteral("材质"), CString(), QStringLiteral("CZ")};
    return true;
}

std::unique_ptr<host::IXmlTool> SmallHost::CreateXmlTool()
{
    return std::make_unique<TextXmlTool>();
}

std::unique_ptr<host::IBillPicker> SmallHost::MakeBillPicker()
{
    return std::make_unique<NoPicker>();
}

std::unique_ptr<host::IPickerWindow> SmallHost::MakeQuotaPicker()
{
    return std::make_unique<NoPicker>();
}

// A dialog asks for the frame before it shows itself.
CWnd* SmallHost::MainFrame()
{
    QTimer::singleShot(0, qApp, [this] { m_atTheDialog(*QApplication::activeModalWidget()); });
    return nullptr;
}
