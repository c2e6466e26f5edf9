#pragma once

#include "tree/QdDeConfigNode.h"
#include "tree/QdDeRecords.h"

/// One quota item: under a `QdNode` in bill mode, directly under a `ConfigNode` in quota mode. It does not
/// care which.
class KTQDDE_EXPORT DeNode final : public QdDeConfigNode
{
public:
    DeNode() = default;

    const DeStruct& GetRecord() const noexcept { return m_record; }
    /// Overwrites the whole record.
    void SetRecord(const DeStruct& record) { m_record = record; }

    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;
    /// A new node with the same id, parent and record. The caller owns it.
    virtual DeNode* Clone() const;

private:
    DeStruct m_record;
};
