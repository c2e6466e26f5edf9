ALTER TABLE bases ADD COLUMN digest BLOB NOT NULL DEFAULT x'';
ALTER TABLE waiting ADD COLUMN base_digest BLOB NOT NULL DEFAULT x'';
ALTER TABLE waiting ADD COLUMN project_id TEXT NOT NULL DEFAULT '';
CREATE TABLE sent (
    configuration TEXT NOT NULL,
    digest BLOB NOT NULL,
    PRIMARY KEY (configuration, digest)
);
