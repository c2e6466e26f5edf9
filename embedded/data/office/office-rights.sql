-- Who may do what, for all that stands in the schema. Runs after everything else when an office is created or
-- upgraded; what the roles have already, they keep. Statements are separated by lines that hold a semicolon
-- alone.

-- Functions may be called by everybody unless that is taken back.
REVOKE ALL ON ALL ROUTINES IN SCHEMA ktqdde FROM PUBLIC
;
REVOKE ALL ON ALL TABLES IN SCHEMA ktqdde FROM PUBLIC
;
-- So that whoever has no role, or an older program, is told so in words.
GRANT USAGE ON SCHEMA ktqdde TO PUBLIC
;
GRANT SELECT ON schema_version TO PUBLIC
;
SELECT allow('reader', 'SELECT ON ALL TABLES IN SCHEMA ktqdde')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION
    publish(text, integer, bytea, bytea, bytea, text, text, text, jsonb)')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION keep_number(text, text, text, text, text, jsonb)')
;
SELECT allow('keeper', 'EXECUTE ON FUNCTION set_removed(text, boolean)')
;
