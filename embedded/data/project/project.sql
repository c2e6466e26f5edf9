CREATE TABLE settings (
    name TEXT PRIMARY KEY,
    value TEXT NOT NULL
);
CREATE TABLE history (
    base_number TEXT NOT NULL,
    number TEXT NOT NULL UNIQUE,
    name TEXT NOT NULL,
    unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL,
    with_annex INTEGER NOT NULL,
    cal_rule TEXT NOT NULL
);
