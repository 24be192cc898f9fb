-- The example shop's database: the catalog of books, the orders placed
-- through the order page, and the SQL of the stored procedures that the
-- work calls without SQL of their own run. Create it beside the program:
--   vlsql <CGI path>/shop.db shop.sql
-- (shop-postgres.sql is the same database on PostgreSQL.)
CREATE TABLE books (
    id INTEGER PRIMARY KEY,
    title TEXT NOT NULL UNIQUE,
    price NUMERIC NOT NULL,
    special INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE orders (
    id INTEGER PRIMARY KEY,
    customer TEXT NOT NULL,
    title TEXT NOT NULL,
    quantity INTEGER NOT NULL CHECK (quantity > 0),
    placed TEXT NOT NULL DEFAULT CURRENT_TIMESTAMP
);

-- The pages show prices with two decimals, whichever database serves them.
CREATE VIEW catalog AS
    SELECT title, printf('%.2f', price) AS price, special FROM books;

CREATE TABLE vl_procedures (
    name TEXT PRIMARY KEY,
    sql TEXT NOT NULL
);

INSERT INTO books (title, price, special) VALUES
    ('Dune', 9.5, 1),
    ('Emma', 7.25, 0),
    ('Middlemarch', 12, 0),
    ('Moby-Dick', 11.9, 1),
    ('The Odyssey', 8, 0),
    ('Ulysses', 14.5, 0);

INSERT INTO vl_procedures (name, sql) VALUES
    ('specials', 'select title, price from catalog where special = 1 order by title');
