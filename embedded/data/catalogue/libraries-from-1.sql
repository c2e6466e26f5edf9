INSERT INTO libraries
    SELECT code, role, file_name, local, year, code_length, suffix_length,
        CASE role WHEN 'de' THEN (SELECT code FROM former_libraries WHERE role = 'qd_de') ELSE '' END,
        CASE role WHEN 'qd' THEN '' ELSE (SELECT code FROM former_libraries WHERE role = 'qd') END
    FROM former_libraries ORDER BY rowid;
INSERT INTO bill_sections
    SELECT (SELECT code FROM former_libraries WHERE role = 'qd'), index_path, title
    FROM former_bill_sections ORDER BY rowid;
INSERT INTO bill_items
    SELECT (SELECT code FROM former_libraries WHERE role = 'qd'),
        number, name, unit, unit_code, with_annex, cal_rule, index_path
    FROM former_bill_items ORDER BY rowid;
INSERT INTO quota_sections
    SELECT (SELECT code FROM former_libraries WHERE role = 'qd_de'), code, title
    FROM former_quota_sections ORDER BY rowid;
INSERT INTO quota_items
    SELECT (SELECT code FROM former_libraries WHERE role = 'qd_de'),
        number, name, unit, unit_code, with_annex, cal_rule, section, bills
    FROM former_quota_items ORDER BY rowid;
