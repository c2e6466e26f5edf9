#include "tree/SMember.h"

#include "tree/Children.h"

#include <memory>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

SMember::~SMember()
{
    DeleteAllConfig();
}

bool SMember::AddConfig(const CPath& /*path*/, int& newId)
{
    static_cast<void>(m_configs.at(0)); // the place in front of the last rule needs a last rule
    auto config = std::make_unique<ConfigNode>();
    config->SetParent(this);
    config->SetId(tree::NextId(LastConfigId));
    newId = config->GetId();
    InsertBeforeLast(config.release());
    return true;
}

void SMember::AddConfig(ConfigNode* config)
{
    m_configs.push_back(config);
}

bool SMember::AddConfigByCopy(int id, int& newId)
{
    const ConfigNode* source = GetConfig(id);
    if (source == nullptr) return false;
    std::unique_ptr<ConfigNode> config(source->Clone());
    config->SetId(tree::NextId(LastConfigId));
    config->SetParent(this);
    newId = config->GetId();
    InsertBeforeLast(config.release());
    return true;
}

bool SMember::DelConfig(int id)
{
    const std::size_t index = IndexOf(id);
    if (index == m_configs.size()) return true;
    ConfigNode* config = m_configs[index];
    m_configs.erase(m_configs.begin() + static_cast<std::ptrdiff_t>(index));
    delete config; // with all its conditions and items
    return true;
}

void SMember::DeleteAllConfig()
{
    tree::DeleteAll(m_configs);
}

bool SMember::MoveUpConfig(const CPath& path)
{
    if (m_configs.empty()) return false;
    const std::size_t index = IndexOf(path.configId);
    if (index == 0 || !(index < m_configs.size() - 1)) return false;
    std::swap(m_configs[index], m_configs[index - 1]);
    return true;
}

bool SMember::MoveDownConfig(const CPath& path)
{
    const std::size_t index = IndexOf(path.configId);
    // On purpose without a guard for fewer than two rules: the unsigned limit wraps around, and the checked
    // index then refuses loudly what would otherwise reach past the end of the list.
    if (!(index < m_configs.size() - 2)) return false;
    ConfigNode*& here = m_configs.at(index);
    ConfigNode*& below = m_configs.at(index + 1);
    std::swap(here, below);
    return true;
}

bool SMember::ReadData(IXMLDOMNode node)
{
    m_name = XmlVisitor::getNodeAttribute(node.ToElement(), u"name"_s);
    IXMLDOMNode container = node.SelectSingleNode(u"Config"_s);
    if (container.IsNull()) {
        container = XmlVisitor::addChild(node.ToElement(), u"Config"_s);
        if (container.IsNull()) return false;
        AddDefaultConfig(container);
    }

    bool hasDefault = false;
    tree::ReadChildren<ConfigNode>(container, this, [&](ConfigNode* config) {
        hasDefault = hasDefault || config->IfDefault();
        AddConfig(config);
        LastConfigId = std::max(LastConfigId, config->GetId());
    });
    if (hasDefault) return true;

    const IXMLDOMElement element = AddDefaultConfig(container);
    auto config = std::make_unique<ConfigNode>();
    config->SetParent(this);
    config->SetId(tree::NextId(LastConfigId));
    // Numbered twice: the element's id 1 overwrites the one just given, also when another rule has id 1,
    // while the counter stays raised. Rules of ids 4 and 7 thus get a third with id 1, and the next new one
    // is 9.
    if (config->ReadData(element)) AddConfig(config.release());
    return true;
}

bool SMember::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    XmlVisitor::addatt(element, u"name"_s, m_name);
    XmlVisitor::addatt(element, u"LastConfigId"_s, CString::number(LastConfigId));
    // Rules are written as `Config` where `AddDefaultConfig` makes `config`; the reader looks at neither.
    tree::WriteChildren(element, u"Config"_s, u"Config"_s, m_configs);
    return true;
}

IXMLDOMElement SMember::AddDefaultConfig(const IXMLDOMNode& container)
{
    const IXMLDOMElement element = XmlVisitor::addChild(container.ToElement(), u"config"_s);
    XmlVisitor::addatt(element, u"id"_s, u"1"_s);
    XmlVisitor::addatt(element, u"bDefault"_s, u"1"_s);
    XmlVisitor::addatt(element, u"LastQdId"_s, u"0"_s);
    XmlVisitor::addatt(element, u"LastConditionId"_s, u"0"_s);
    XmlVisitor::addatt(element, u"LastDeId"_s, u"0"_s);
    return element;
}

/// The index of the first rule with that id, or the size of the list.
std::size_t SMember::IndexOf(int id) const
{
    const auto found = std::find_if(m_configs.begin(), m_configs.end(),
                                    [id](const ConfigNode* config) { return config->GetId() == id; });
    return static_cast<std::size_t>(found - m_configs.begin());
}

void SMember::InsertBeforeLast(ConfigNode* config)
{
    m_configs.insert(m_configs.end() - 1, config);
}
