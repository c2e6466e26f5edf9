#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <functional>

/// Messages to the user. Code below the dialogs decides text and kind; how a message is shown is decided by
/// whoever runs the program: the dialogs install real boxes, tests a recorder. Where nobody installed
/// anything the text goes to standard error and a question is answered No.
namespace platform {

enum class MessageKind {
    Warning,     ///< warning icon, OK
    Question,    ///< warning icon, Yes and No, No is the default button
    Information, ///< information icon, OK
    Plain,       ///< no icon, OK: the toolkit's plain box
};

enum class Answer { Ok, Yes, No };

struct Message
{
    MessageKind kind = MessageKind::Warning;
    CString text;
    CString caption;
    /// Whether the active window owns the box; the one about a missing XML engine has no owner.
    bool owned = true;
};

/// Shows a message and gives the answer: `Ok`, or for a question `Yes` or `No` (also when it was closed
/// otherwise).
using MessageHandler = std::function<Answer(const Message&)>;

/// The caption of every box.
KTQDDE_EXPORT CString MessageCaption();

/// The punctuation that ends a text: a warning, a question, a report.
inline constexpr char16_t WarningMark[] = u"!";
inline constexpr char16_t QuestionMark[] = u"?";
inline constexpr char16_t ReportMark[] = u".";

/// Shows `message` by the handler in force.
KTQDDE_EXPORT Answer Show(const Message& message);

/// `text` followed by "!", as a warning with the usual caption.
KTQDDE_EXPORT void ShowWarning(const CString& text);
/// `text` followed by "?", as a question with the usual caption. True for Yes.
KTQDDE_EXPORT bool AskYesNo(const CString& text);
/// `text` followed by ".", as a report with the usual caption.
KTQDDE_EXPORT void ShowReport(const CString& text);

/// Replaces the handler and gives back the former one. An empty handler restores standard error.
KTQDDE_EXPORT MessageHandler InstallMessageHandler(MessageHandler handler);

/// Installs a handler for as long as it lives.
class KTQDDE_EXPORT ScopedMessageHandler
{
public:
    explicit ScopedMessageHandler(MessageHandler handler);
    ~ScopedMessageHandler();
    ScopedMessageHandler(const ScopedMessageHandler&) = delete;
    ScopedMessageHandler& operator=(const ScopedMessageHandler&) = delete;

private:
    MessageHandler m_previous;
};

} // namespace platform
