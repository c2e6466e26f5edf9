CREATE TABLE seen (
    revision INTEGER NOT NULL,
    at TEXT NOT NULL
);
CREATE TABLE bases (
    configuration TEXT PRIMARY KEY,
    version INTEGER NOT NULL
);
CREATE TABLE waiting (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    since TEXT NOT NULL,
    configuration TEXT NOT NULL UNIQUE,
    base INTEGER NOT NULL,
    content BLOB NOT NULL,
    note TEXT NOT NULL,
    project TEXT NOT NULL
);
CREATE TABLE waiting_numbers (
    waiting INTEGER NOT NULL REFERENCES waiting (id),
    library TEXT NOT NULL,
    number TEXT NOT NULL,
    name TEXT NOT NULL,
    unit TEXT NOT NULL
);
