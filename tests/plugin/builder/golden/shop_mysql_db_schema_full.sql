
CREATE TABLE `t_customer` (`customer_id` INTEGER NOT NULL AUTO_INCREMENT, `email` TEXT NOT NULL UNIQUE, `balance` DECIMAL(12,2), `state` INTEGER NOT NULL, `birthday` DATE, `address.city` TEXT, `phone` TEXT, `external` TEXT, deleted_at TEXT, `country_code` TEXT, `recruiter_id` INTEGER, `unkeyed_ref` , PRIMARY KEY (`customer_id`));
CREATE TABLE `country` (`code` VARCHAR(255) NOT NULL, `label` TEXT, PRIMARY KEY (`code`));
CREATE TABLE `tag` (`tag_id` INTEGER NOT NULL AUTO_INCREMENT, `word` TEXT NOT NULL, PRIMARY KEY (`tag_id`));
CREATE TABLE `order_line` (`order_id` INTEGER NOT NULL, `line_code` VARCHAR(255) NOT NULL, `lat|lon|alt` DOUBLE, `origin_code` TEXT, PRIMARY KEY (`order_id`, `line_code`));
CREATE TABLE `all_types` (`c_bool` SMALLINT, `c_zk_bool` SMALLINT, `c_short` SMALLINT, `c_long_long` BIGINT, `c_float` FLOAT, `c_long_double` DOUBLE, `c_qint8` SMALLINT, `c_quint16` INTEGER, `c_quint64` BIGINT, `c_uuid` TEXT, `c_time` TIME, `c_datetime` TIMESTAMP, `c_bytes` LONGBLOB, `c_neutral` TEXT);
CREATE TABLE `shipment_with_a_long_name` (`id` INTEGER NOT NULL AUTO_INCREMENT, `gross|net` INTEGER, `order_id` INTEGER, `line_code` TEXT, `archive_id` INTEGER, PRIMARY KEY (`id`));
CREATE TABLE `counted_pair` (`a` INTEGER NOT NULL AUTO_INCREMENT, `b` INTEGER NOT NULL AUTO_INCREMENT, PRIMARY KEY (`a`, `b`));
CREATE TABLE `bare` ();
CREATE TABLE customer_tag (customer_id INTEGER, tag_id INTEGER);
CREATE TABLE order_line_country (country_code VARCHAR(255), order_id INTEGER, line_code VARCHAR(255));
CREATE INDEX idx_t_customer_email ON `t_customer` (`email`(255));
CREATE INDEX idx_t_customer_phone ON `t_customer` (`phone`(255));
CREATE INDEX idx_t_customer_country_code ON `t_customer` (`country_code`(255));
CREATE INDEX idx_country_label ON `country` (`label`(255));
CREATE INDEX idx_all_types_c_uuid ON `all_types` (`c_uuid`(255));
CREATE INDEX idx_shipment_with_a_long_name_gross ON `shipment_with_a_long_name` (`gross`);
CREATE INDEX idx_shipment_with_a_long_name_net ON `shipment_with_a_long_name` (`net`);
ALTER TABLE `t_customer` ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (`country_code`) REFERENCES `country` (`code`);
ALTER TABLE customer_tag ADD CONSTRAINT fk_t_customer_tags FOREIGN KEY (customer_id) REFERENCES `t_customer` (`customer_id`);
ALTER TABLE `t_customer` ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (`unkeyed_ref`) REFERENCES `all_types` ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES `country` (`code`);
ALTER TABLE customer_tag ADD CONSTRAINT fk_tag_customers FOREIGN KEY (tag_id) REFERENCES `tag` (`tag_id`);
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES `order_line` (`order_id`, `line_code`);
ALTER TABLE `order_line` ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (`origin_code`) REFERENCES `country` (`code`);
ALTER TABLE `shipment_with_a_long_name` ADD CONSTRAINT fk_shipment_with_a_long_name_order_id_line_code FOREIGN KEY (`order_id`, `line_code`) REFERENCES `order_line` (`order_id`, `line_code`);
ALTER TABLE `shipment_with_a_long_name` ADD CONSTRAINT fk_shipment_with_a_long_name_address_id FOREIGN KEY (`address_id`) REFERENCES `t_customer` (`customer_id`);
ALTER TABLE `shipment_with_a_long_name` ADD CONSTRAINT fk_shipment_with_a_long_name_archive_id FOREIGN KEY (`archive_id`) REFERENCES `archive` (`id`);

