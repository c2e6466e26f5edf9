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
    unit TEXT NOT NULL DEFAULT '',
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
