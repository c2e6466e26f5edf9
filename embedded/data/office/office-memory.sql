CREATE TABLE seen (
    revision INTEGER NOT NULL,
    at TEXT NOT NULL
);
CREATE TABLE bases (
    configuration TEXT PRIMARY KEY,
    version INTEGER NOT NULL,
    digest BLOB NOT NULL
);
CREATE TABLE sent (
    configuration TEXT NOT NULL,
    digest BLOB NOT NULL,
    PRIMARY KEY (configuration, digest)
);
CREATE TABLE waiting (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    since TEXT NOT NULL,
    configuration TEXT NOT NULL UNIQUE,
    base INTEGER NOT NULL,
    content BLOB NOT NULL,
    note TEXT NOT NULL,
    project TEXT NOT NULL,
    base_digest BLOB NOT NULL,
    project_id TEXT NOT NULL
);
CREATE TABLE waiting_numbers (
    waiting INTEGER NOT NULL REFERENCES waiting (id),
    library TEXT NOT NULL,
    number TEXT NOT NULL,
    name TEXT NOT NULL,
    unit TEXT NOT NULL
);
