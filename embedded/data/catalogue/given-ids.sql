CREATE TABLE given_ids (
    level TEXT PRIMARY KEY,
    highest INTEGER NOT NULL
);
