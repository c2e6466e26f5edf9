CREATE TABLE specialties (
    id INTEGER NOT NULL UNIQUE,
    name TEXT NOT NULL UNIQUE
);
CREATE TABLE big_categories (
    id INTEGER NOT NULL UNIQUE,
    specialty TEXT NOT NULL,
    name TEXT NOT NULL,
    UNIQUE (specialty, name)
);
CREATE TABLE small_categories (
    id INTEGER NOT NULL UNIQUE,
    specialty TEXT NOT NULL,
    big_category TEXT NOT NULL,
    name TEXT NOT NULL,
    att_type INTEGER NOT NULL,
    index_path TEXT NOT NULL,
    UNIQUE (specialty, big_category, name)
);
CREATE TABLE attributes (
    category TEXT NOT NULL,
    group_name TEXT NOT NULL,
    display_name TEXT NOT NULL,
    extra TEXT NOT NULL,
    code TEXT NOT NULL,
    UNIQUE (category, code)
);
CREATE TABLE cell_data (
    code TEXT PRIMARY KEY,
    kind INTEGER NOT NULL,
    value_list TEXT NOT NULL
);
CREATE TABLE drop_lists (
    code TEXT NOT NULL,
    name TEXT NOT NULL,
    value_list TEXT NOT NULL,
    UNIQUE (code, name)
);
CREATE TABLE calculation_rules (
    item TEXT PRIMARY KEY,
    code TEXT NOT NULL UNIQUE,
    kind INTEGER NOT NULL,
    rule TEXT NOT NULL
);
CREATE TABLE calculation_items (
    category TEXT NOT NULL,
    list_name TEXT NOT NULL,
    item TEXT NOT NULL
);
CREATE TABLE libraries (
    role TEXT PRIMARY KEY,
    code TEXT NOT NULL,
    file_name TEXT NOT NULL,
    local TEXT NOT NULL,
    year TEXT NOT NULL,
    code_length INTEGER NOT NULL,
    suffix_length INTEGER NOT NULL
);
CREATE TABLE bill_sections (
    index_path TEXT PRIMARY KEY,
    title TEXT NOT NULL
);
CREATE TABLE bill_items (
    number TEXT PRIMARY KEY,
    name TEXT NOT NULL,
    unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL,
    with_annex INTEGER NOT NULL,
    cal_rule TEXT NOT NULL,
    index_path TEXT NOT NULL
);
CREATE TABLE quota_sections (
    code TEXT PRIMARY KEY,
    title TEXT NOT NULL
);
CREATE TABLE quota_items (
    number TEXT PRIMARY KEY,
    name TEXT NOT NULL,
    unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL,
    with_annex INTEGER NOT NULL,
    cal_rule TEXT NOT NULL,
    section TEXT NOT NULL,
    bills TEXT NOT NULL
);
