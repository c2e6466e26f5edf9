CREATE TABLE libraries (
    code TEXT PRIMARY KEY,
    role TEXT NOT NULL,
    file_name TEXT NOT NULL,
    local TEXT NOT NULL,
    year TEXT NOT NULL,
    code_length INTEGER NOT NULL,
    suffix_length INTEGER NOT NULL,
    items TEXT NOT NULL,
    bill_library TEXT NOT NULL
);
CREATE TABLE bill_sections (
    items TEXT NOT NULL,
    index_path TEXT NOT NULL,
    title TEXT NOT NULL,
    PRIMARY KEY (items, index_path)
);
CREATE TABLE bill_items (
    items TEXT NOT NULL,
    number TEXT NOT NULL,
    name TEXT NOT NULL,
    unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL,
    with_annex INTEGER NOT NULL,
    cal_rule TEXT NOT NULL,
    index_path TEXT NOT NULL,
    PRIMARY KEY (items, number)
);
CREATE TABLE quota_sections (
    items TEXT NOT NULL,
    code TEXT NOT NULL,
    title TEXT NOT NULL,
    PRIMARY KEY (items, code)
);
CREATE TABLE quota_items (
    items TEXT NOT NULL,
    number TEXT NOT NULL,
    name TEXT NOT NULL,
    unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL,
    with_annex INTEGER NOT NULL,
    cal_rule TEXT NOT NULL,
    section TEXT NOT NULL,
    bills TEXT NOT NULL,
    PRIMARY KEY (items, number)
);
