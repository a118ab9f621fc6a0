
CREATE TABLE t_customer (customer_id BIGSERIAL NOT NULL PRIMARY KEY, email TEXT NOT NULL UNIQUE, balance DECIMAL(12,2), state INTEGER NOT NULL, birthday DATE, address.city TEXT, phone TEXT, external TEXT, deleted_at TEXT, country_code TEXT, recruiter_id INTEGER, unkeyed_ref ) WITH (OIDS = FALSE);
CREATE TABLE country (code TEXT NOT NULL PRIMARY KEY, label TEXT) WITH (OIDS = FALSE);
CREATE TABLE tag (tag_id BIGSERIAL NOT NULL PRIMARY KEY, word TEXT NOT NULL) WITH (OIDS = FALSE);
CREATE TABLE order_line (order_id INTEGER NOT NULL, line_code TEXT NOT NULL, lat|lon|alt FLOAT, origin_code TEXT, PRIMARY KEY (order_id, line_code)) WITH (OIDS = FALSE);
CREATE TABLE all_types (c_bool BOOLEAN, c_zk_bool BOOLEAN, c_short SMALLINT, c_long_long BIGINT, c_float FLOAT, c_long_double FLOAT, c_qint8 SMALLINT, c_quint16 INTEGER, c_quint64 BIGINT, c_uuid TEXT, c_time TIME, c_datetime TIMESTAMP, c_bytes BYTEA, c_neutral TEXT) WITH (OIDS = FALSE);
CREATE TABLE shipment_with_a_long_name (id BIGSERIAL NOT NULL PRIMARY KEY, gross|net INTEGER, order_id INTEGER, line_code TEXT, archive_id INTEGER) WITH (OIDS = FALSE);
CREATE TABLE counted_pair (a BIGSERIAL NOT NULL, b BIGSERIAL NOT NULL, PRIMARY KEY (a, b)) WITH (OIDS = FALSE);
CREATE TABLE bare () WITH (OIDS = FALSE);
CREATE TABLE customer_tag (customer_id BIGSERIAL, tag_id BIGSERIAL) WITH (OIDS = FALSE);
CREATE TABLE order_line_country (country_code TEXT, order_id INTEGER, line_code TEXT) WITH (OIDS = FALSE);
CREATE INDEX idx_t_customer_email ON t_customer (email);
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
CREATE INDEX idx_t_customer_country_code ON t_customer (country_code);
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_gross ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_net ON shipment_with_a_long_name (net);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_t_customer_tags FOREIGN KEY (customer_id) REFERENCES t_customer (customer_id);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_tag_customers FOREIGN KEY (tag_id) REFERENCES tag (tag_id);
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_order_id_line_code FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_address_id FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_archive_id FOREIGN KEY (archive_id) REFERENCES archive (id);

