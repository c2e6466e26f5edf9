#include "embedded/OldProject.h"

#include "embedded/data/engine/Database.h"

namespace test {

using namespace Qt::StringLiterals;

namespace {

const CString Version1 = uR"(
CREATE TABLE libraries (role TEXT PRIMARY KEY, code TEXT NOT NULL, file_name TEXT NOT NULL,
    local TEXT NOT NULL, year TEXT NOT NULL, code_length INTEGER NOT NULL, suffix_length INTEGER NOT NULL);
CREATE TABLE bill_sections (index_path TEXT PRIMARY KEY, title TEXT NOT NULL);
CREATE TABLE bill_items (number TEXT PRIMARY KEY, name TEXT NOT NULL, unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL, with_annex INTEGER NOT NULL, cal_rule TEXT NOT NULL, index_path TEXT NOT NULL);
CREATE TABLE quota_sections (code TEXT PRIMARY KEY, title TEXT NOT NULL);
CREATE TABLE quota_items (number TEXT PRIMARY KEY, name TEXT NOT NULL, unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL, with_annex INTEGER NOT NULL, cal_rule TEXT NOT NULL, section TEXT NOT NULL,
    bills TEXT NOT NULL);
INSERT INTO libraries VALUES
    ('qd', 'GB50856-2013', '通用安装工程工程量计算规范2013', '全国', '2013', 9, 3),
    ('qd_de', 'DEMO-QDDE-2024', '示例安装定额（清单模式）', '示例', '2024', -1, -1),
    ('de', 'DEMO-DE-2024', '示例安装定额（定额模式）', '示例', '2024', -1, -1);
INSERT INTO bill_sections VALUES ('0999', '自有章'), ('0310', '给排水'), ('0310\031001', '管道');
INSERT INTO bill_items VALUES
    ('099901002', '自有乙', '10m', 10, 1, '管道长度', '0999'),
    ('099901001', '自有甲', 'm', 1, 0, '', '0999'),
    ('031001001', '镀锌钢管', 'm', 1, 1, '管道长度', '0310\031001');
INSERT INTO quota_sections VALUES ('自', '自有');
INSERT INTO quota_items VALUES ('自-1', '自有安装', '10m', 10, 1, '管道长度', '自', '099901002,031001001');
UPDATE small_categories SET index_path = '0310\031001' WHERE index_path LIKE '0310\031001%';
UPDATE small_categories SET index_path = '0999' WHERE name = '热水管' AND specialty = '给排水';
ALTER TABLE attributes DROP COLUMN unit;
PRAGMA user_version = 1)"_s;

} // namespace

void MakeOld(const TestProject& project)
{
    embedded::Database catalogue(project.Path(u"app\\catalogue.db"_s));
    for (const CString& table :
         {u"libraries"_s, u"bill_sections"_s, u"bill_items"_s, u"quota_sections"_s, u"quota_items"_s})
        catalogue.Execute(u"DROP TABLE "_s + table);
    catalogue.ExecuteScript(Version1);
    project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name NOT IN ('mode', 'specialty')"_s);
}

} // namespace test
