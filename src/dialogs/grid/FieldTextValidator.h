#pragma once

#include "dialogs/grid/GridEditors.h"

class QLineEdit;

/// For a field that does not scroll: of what would make the text wider than the field it takes as much as has
/// room, from the front. A text that is too wide since the font has grown can still be shortened.
class FieldTextValidator : public GridTextValidator
{
public:
    /// Belongs to `field`.
    explicit FieldTextValidator(QLineEdit& field);

    State validate(QString& input, int& position) const override;

private:
    int Room() const;

    QLineEdit& m_field;
    QString m_accepted;
};
