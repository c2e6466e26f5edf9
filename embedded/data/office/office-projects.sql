-- What the projects of an office use of its catalogue, so that nobody takes it away from under them. Statements are
-- separated by lines that hold a semicolon alone.
--
-- Projects tell it when they are opened. One that is gone stays in the table until a keeper takes it out.

CREATE TABLE projects (
    project text COLLATE "C" PRIMARY KEY, -- its folder and its machine
    specialty text NOT NULL,
    libraries jsonb NOT NULL, -- the codes of those in use, by role
    who text NOT NULL,
    at timestamptz NOT NULL -- not to the minute: what has not changed is written once a day
)
;
CREATE FUNCTION note_project(the_project text, the_specialty text, the_libraries jsonb) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    IF EXISTS (
        SELECT FROM projects WHERE project = the_project AND specialty = the_specialty AND
            libraries = the_libraries AND at > clock_timestamp() - interval '1 day') THEN
        RETURN;
    END IF;
    INSERT INTO projects VALUES (
        the_project, the_specialty, the_libraries, session_user, clock_timestamp())
        ON CONFLICT (project) DO UPDATE
            SET specialty = excluded.specialty, libraries = excluded.libraries, who = excluded.who,
                at = excluded.at;
END
$$
;
-- Takes out a project that is gone. False when there is none of that name.
CREATE FUNCTION forget_project(the_project text) RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    DELETE FROM projects WHERE project = the_project;
    RETURN FOUND;
END
$$
;
SELECT allow('editor', 'EXECUTE ON FUNCTION note_project(text, text, jsonb)')
;
SELECT allow('keeper', 'EXECUTE ON FUNCTION forget_project(text)')
