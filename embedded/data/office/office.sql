-- What an office has beside its catalogue. Statements are separated by lines that hold a semicolon alone.
--
-- Nobody writes the tables of this script: versions come in through publish(), configurations through it and
-- set_removed(), changes through triggers. These run with the rights of the owner, so each says where it looks
-- names up and takes the user from session_user, which nobody can choose.

-- The roles belong to the whole server, so their names begin with the one of the database.
DO $$
DECLARE
    office text := current_database();
    lower_role text;
    role_name text;
    word text;
BEGIN
    IF octet_length(office) > 56 THEN
        RAISE EXCEPTION '数据库名“%”太长：最多 56 个字节', office;
    END IF;
    IF current_setting('server_encoding') <> 'UTF8' THEN
        RAISE EXCEPTION '数据库的编码是 %，办公室要求 UTF8', current_setting('server_encoding');
    END IF;
    FOREACH word IN ARRAY ARRAY['reader', 'editor', 'keeper'] LOOP
        role_name := office || '_' || word;
        IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = role_name) THEN
            EXECUTE format('CREATE ROLE %I NOLOGIN', role_name);
        END IF;
        IF lower_role IS NOT NULL THEN
            EXECUTE format('GRANT %I TO %I', lower_role, role_name);
        END IF;
        lower_role := role_name;
    END LOOP;
    EXECUTE format('GRANT %I TO %I', lower_role, session_user);
END
$$
;

-- Gives a privilege, such as 'SELECT ON changes', to one of the roles.
CREATE FUNCTION allow(role_word text, privilege text) RETURNS void
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
BEGIN
    EXECUTE format('GRANT %s TO %I', privilege, current_database() || '_' || role_word);
END
$$
;

-- One row: counts the changes of the catalogue.
CREATE TABLE office_state (
    revision bigint NOT NULL,
    created_at timestamptz NOT NULL DEFAULT now(),
    created_by text NOT NULL DEFAULT session_user
)
;
INSERT INTO office_state (revision) VALUES ((extract(epoch FROM clock_timestamp()) * 1000000)::bigint)
;
CREATE UNIQUE INDEX office_state_has_one_row ON office_state ((true))
;

-- Who changed what, row by row.
CREATE TABLE changes (
    id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    at timestamptz NOT NULL,
    who text NOT NULL,
    txid bigint NOT NULL, -- the same for all that was done at once
    table_name text NOT NULL,
    operation text NOT NULL,
    old_row jsonb,
    new_row jsonb
)
;
CREATE FUNCTION record_change() RETURNS trigger
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    -- A row that moved alone is the same row.
    IF TG_OP = 'UPDATE' AND to_jsonb(OLD) - 'place' = to_jsonb(NEW) - 'place' THEN
        RETURN NULL;
    END IF;
    INSERT INTO changes (at, who, txid, table_name, operation, old_row, new_row) VALUES (
        clock_timestamp(), session_user, pg_current_xact_id()::text::bigint, TG_TABLE_NAME, TG_OP,
        CASE WHEN TG_OP IN ('UPDATE', 'DELETE') THEN to_jsonb(OLD) END,
        CASE WHEN TG_OP IN ('INSERT', 'UPDATE') THEN to_jsonb(NEW) END);
    RETURN NULL;
END
$$
;
CREATE FUNCTION count_revision() RETURNS trigger
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    -- A statement that touched no row has changed nothing.
    IF TG_OP <> 'TRUNCATE' THEN
        IF NOT EXISTS (SELECT FROM touched) THEN
            RETURN NULL;
        END IF;
    END IF;
    -- By the clock where that is ahead: an office that was put back from a copy comes to no number that a
    -- project has seen with another content.
    UPDATE office_state SET revision = greatest(
        revision + 1, (extract(epoch FROM clock_timestamp()) * 1000000)::bigint);
    RETURN NULL;
END
$$
;
CREATE FUNCTION refuse_change() RETURNS trigger
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
BEGIN
    RAISE EXCEPTION '表 % 只能追加，不能修改或删除', TG_TABLE_NAME;
END
$$
;

-- From now on every change of a row of the table is recorded.
CREATE FUNCTION record_changes_of(the_table regclass) RETURNS void
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
BEGIN
    EXECUTE format('CREATE TRIGGER record_row AFTER INSERT OR UPDATE OR DELETE ON %s '
                   'FOR EACH ROW EXECUTE FUNCTION record_change()', the_table);
    EXECUTE format('CREATE TRIGGER record_truncation AFTER TRUNCATE ON %s '
                   'FOR EACH STATEMENT EXECUTE FUNCTION record_change()', the_table);
END
$$
;
-- Makes a table one of the catalogue's: keepers write it, its changes are recorded and count as revisions.
CREATE FUNCTION take_into_catalogue(the_table regclass) RETURNS void
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
BEGIN
    PERFORM record_changes_of(the_table);
    EXECUTE format('CREATE TRIGGER count_insertion AFTER INSERT ON %s REFERENCING NEW TABLE AS touched '
                   'FOR EACH STATEMENT EXECUTE FUNCTION count_revision()', the_table);
    EXECUTE format('CREATE TRIGGER count_update AFTER UPDATE ON %s REFERENCING NEW TABLE AS touched '
                   'FOR EACH STATEMENT EXECUTE FUNCTION count_revision()', the_table);
    EXECUTE format('CREATE TRIGGER count_deletion AFTER DELETE ON %s REFERENCING OLD TABLE AS touched '
                   'FOR EACH STATEMENT EXECUTE FUNCTION count_revision()', the_table);
    EXECUTE format('CREATE TRIGGER count_truncation AFTER TRUNCATE ON %s '
                   'FOR EACH STATEMENT EXECUTE FUNCTION count_revision()', the_table);
    PERFORM allow('keeper', format('INSERT, UPDATE, DELETE ON %s', the_table));
END
$$
;

-- The published configurations. Their names are told apart and ordered by their characters, whatever order the
-- database has for texts. They become names of files, also of those systems that forbid most.
CREATE TABLE configurations (
    name text COLLATE "C" PRIMARY KEY,
    is_removed boolean NOT NULL DEFAULT false,
    CONSTRAINT name_is_possible CHECK (
        name <> '' AND length(name) <= 99 AND name !~ '[/\\:*?"<>|\u0001-\u001f\u007f-\u009f]' AND
        name = btrim(name, U&' \00A0\1680\2000\2001\2002\2003\2004\2005\2006\2007\2008\2009\200A\2028\2029'
                           '\202F\205F\3000'))
)
;
CREATE TABLE versions (
    configuration text COLLATE "C" NOT NULL REFERENCES configurations,
    number integer NOT NULL,
    base integer NOT NULL,
    at timestamptz NOT NULL,
    author text NOT NULL,
    project text NOT NULL,
    note text NOT NULL,
    numbers jsonb NOT NULL, -- the bill numbers in it that are projects' own, see record_numbers()
    digest bytea NOT NULL,
    content bytea NOT NULL,
    PRIMARY KEY (configuration, number),
    CONSTRAINT base_is_the_last_version CHECK (number > 0 AND base = number - 1),
    CONSTRAINT content_is_whole CHECK (digest = sha256(content)),
    CONSTRAINT content_has_a_bearable_size CHECK (octet_length(content) BETWEEN 1 AND 268435456)
)
;
CREATE INDEX versions_by_digest ON versions (configuration, digest)
;
SELECT record_changes_of('configurations')
;
CREATE TRIGGER refuse_change BEFORE UPDATE OR DELETE OR TRUNCATE ON versions
    FOR EACH STATEMENT EXECUTE FUNCTION refuse_change()
;
CREATE TRIGGER refuse_change BEFORE UPDATE OR DELETE OR TRUNCATE ON changes
    FOR EACH STATEMENT EXECUTE FUNCTION refuse_change()
;

-- Removes a configuration from the list, or brings it back. False when there is none of that name.
CREATE FUNCTION set_removed(the_configuration text, removal boolean) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    UPDATE configurations SET is_removed = removal WHERE name = the_configuration;
    RETURN FOUND;
END
$$
