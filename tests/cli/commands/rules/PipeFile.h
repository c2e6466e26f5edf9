#pragma once

#include <QtCore/QByteArray>

/// A rule file written by hand, as no program would, so that any writing shows. Its rules are those of
/// 给水管.
namespace test {

inline const QByteArray PipeFileHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"1\">\n";
inline const QByteArray PipeFileTail = "</自动套清单定额配置信息>\n";

/// A rule for one material with one bill item.
inline QByteArray PipeElement(int id, const QByteArray& material, const QByteArray& formula = "管道长度")
{
    return "<Config id=\"" + QByteArray::number(id) +
           "\" bDefault=\"0\"><Condition><condition id=\"1\" strCFType=\"材质\" bEqual=\"true\" "
           "strEqualoperator=\"＝\" "
           "strValue=\"" +
           material +
           "\"/></Condition><Qd><qd id=\"1\" strQdId=\"031001001\" strName=\"镀锌钢管\" strUnit=\"m\" "
           "strFormula=\"" +
           formula + "\"/></Qd></Config>\n";
}

/// The file with these rules and a default rule behind them; `before` are specialties in front of theirs.
inline QByteArray PipeFile(const QByteArray& rules, const QByteArray& before = {})
{
    return PipeFileHead + before +
           "<给排水 id=\"1\" name=\"给排水\"><LMember id=\"1\" name=\"管道\"><SMember id=\"1\" "
           "name=\"给水管\"><Config>\n" +
           rules + "<Config id=\"1\" bDefault=\"1\"/></Config></SMember></LMember></给排水>\n" + PipeFileTail;
}

} // namespace test
