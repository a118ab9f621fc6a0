
DROP TABLE `archive`;
DROP TABLE `region`;
RENAME TABLE `t_client` TO `t_customer`;
ALTER TABLE `t_customer` DROP COLUMN `cache`;
ALTER TABLE `t_customer` DROP COLUMN `region_id`;
ALTER TABLE `t_customer` CHANGE `mail` `email` TEXT NOT NULL;
ALTER TABLE `t_customer` CHANGE `sum` `balance` DECIMAL(12,2);
ALTER TABLE `t_customer` ADD COLUMN `state` INTEGER NOT NULL;
ALTER TABLE `t_customer` ADD COLUMN `country_code` TEXT;

ALTER TABLE `t_customer` ADD COLUMN `recruiter_id` INTEGER;
ALTER TABLE `t_customer` ADD COLUMN `email` TEXT;
ALTER TABLE `t_customer` ADD COLUMN `birthday` DATE;
DROP INDEX idx_t_client_address_city ON `t_customer`;
CREATE INDEX idx_t_customer_phone ON `t_customer` (`phone`(255));
ALTER TABLE `t_customer` ADD COLUMN `external` TEXT;
ALTER TABLE `t_customer` ADD COLUMN `unkeyed_ref` TEXT;
CREATE TABLE `country` (`code` TEXT NOT NULL, `label` TEXT, PRIMARY KEY (`code`(255)));


ALTER TABLE `order_line` CHANGE `line_no` `line_code` TEXT;
ALTER TABLE `order_line` DROP COLUMN `lat`;
ALTER TABLE `order_line` DROP COLUMN `lon`;
ALTER TABLE `order_line` ADD COLUMN `lat` DOUBLE;
ALTER TABLE `order_line` ADD COLUMN `lon` DOUBLE;
ALTER TABLE `order_line` ADD COLUMN `alt` DOUBLE;
DROP INDEX idx_order_line_lat ON `order_line`;
DROP INDEX idx_order_line_lon ON `order_line`;

ALTER TABLE `order_line` ADD COLUMN `origin_code` TEXT;
CREATE TABLE `all_types` (`c_bool` SMALLINT, `c_zk_bool` SMALLINT, `c_short` SMALLINT, `c_long_long` BIGINT, `c_float` FLOAT, `c_long_double` DOUBLE, `c_qint8` SMALLINT, `c_quint16` INTEGER, `c_quint64` BIGINT, `c_uuid` TEXT, `c_time` TIME, `c_datetime` TIMESTAMP, `c_bytes` LONGBLOB, `c_neutral` TEXT);
CREATE TABLE `shipment_with_a_long_name` (`id` INTEGER NOT NULL AUTO_INCREMENT, `gross|net` INTEGER, `order_id` INTEGER, `line_code` TEXT, `archive_id` INTEGER, PRIMARY KEY (`id`));
CREATE TABLE `counted_pair` (`a` INTEGER NOT NULL AUTO_INCREMENT, `b` INTEGER NOT NULL AUTO_INCREMENT, PRIMARY KEY (`a`, `b`));
CREATE TABLE `bare` ();
CREATE TABLE order_line_country (country_code TEXT, order_id INTEGER, line_code TEXT);
CREATE INDEX idx_country_label ON `country` (`label`(255));
CREATE INDEX idx_all_types_c_uuid ON `all_types` (`c_uuid`(255));
CREATE INDEX idx_shipment_with_a_long_name_gross ON `shipment_with_a_long_name` (`gross`);
CREATE INDEX idx_shipment_with_a_long_name_net ON `shipment_with_a_long_name` (`net`);

