#pragma once

#include <QtWidgets/QLayout>

#include <memory>
#include <vector>

namespace editor {

/// Puts widgets beside each other at their usual size and goes on in the next line where there is no more
/// room, so that a narrow dock shows all of them.
class FlowLayout : public QLayout
{
public:
    /// The widget owns this.
    explicit FlowLayout(QWidget& place);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

private:
    /// Places the items in that width, or only measures. Gives the height.
    int Arrange(const QRect& place, bool onlyMeasures) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace editor
