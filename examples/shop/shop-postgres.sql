-- The example shop's database on PostgreSQL: the same tables as shop.sql,
-- the view that formats the prices, and the stored function that the work
-- call without SQL of its own calls (SELECT * FROM specials()). Create it in
-- an empty database owned by the role the program connects as:
--   createdb shop && psql -v ON_ERROR_STOP=1 -d shop -f shop-postgres.sql
CREATE TABLE books (
    id serial PRIMARY KEY,
    title text NOT NULL UNIQUE,
    price numeric(8, 2) NOT NULL,
    special integer NOT NULL DEFAULT 0
);

CREATE TABLE orders (
    id serial PRIMARY KEY,
    customer text NOT NULL,
    title text NOT NULL,
    quantity integer NOT NULL CHECK (quantity > 0),
    placed timestamptz NOT NULL DEFAULT now()
);

-- The pages show prices with two decimals, whichever database serves them.
CREATE VIEW catalog AS
    SELECT title, to_char(price, 'FM999990.00') AS price, special FROM books;

CREATE FUNCTION specials() RETURNS TABLE (title text, price text)
    LANGUAGE sql STABLE
    AS $$ SELECT title, price FROM catalog WHERE special = 1 ORDER BY title $$;

INSERT INTO books (title, price, special) VALUES
    ('Dune', 9.5, 1),
    ('Emma', 7.25, 0),
    ('Middlemarch', 12, 0),
    ('Moby-Dick', 11.9, 1),
    ('The Odyssey', 8, 0),
    ('Ulysses', 14.5, 0);
