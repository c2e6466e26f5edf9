#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>

class QWidget;

namespace editor {

/// Says which page and heading of the manual tells of a widget and what is in it: "config.md#取值设置".
void SetHelpTopic(QWidget& widget, const QString& topic);

/// Answers F1 wherever the focus is in the program, modal windows included, for as long as it lives.
class HelpTopics : public QObject
{
public:
    /// A window that says nothing about itself, as those of the module and of the host, is known by its
    /// title.
    struct Title
    {
        QString beginning;
        QString topic;
    };

    /// `show` shows the manual at a topic; `otherwise` is the topic of what has none.
    HelpTopics(QList<Title> windows, QString otherwise, std::function<void(const QString& topic)> show);
    ~HelpTopics() override;

    /// The topic of the widget or the nearest around it, windows included; `otherwise` when none has one.
    QString TopicOf(const QWidget* widget) const;
    /// Shows the manual for what has the focus.
    void ShowForFocus() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString TopicOfTitle(const QString& title) const;

    QList<Title> m_windows;
    QString m_otherwise;
    std::function<void(const QString&)> m_show;
};

/// The windows of the module, of its host and of this program that are known by their titles.
QList<HelpTopics::Title> TopicsOfWindows();

} // namespace editor
