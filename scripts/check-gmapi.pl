#!/usr/bin/env perl
# Fails when docs/gmapi.md shows another conversation with GoldMine than the program has:
# check-gmapi.pl <file>, the file being what the unit tests wrote down (tests/fakes/Said.h).
#   - Every command that the program sent in the tests stands on the page, and the other way round:
#     the same call, the same arguments in the same order, the same steps and macros.
#   - Every reply on the page is one that the program took for a success in the tests, or a failure.
use strict;
use warnings;

my $page = 'docs/gmapi.md';

sub read_lines {
    my ($path) = @_;
    open my $file, '<', $path or die "$path: $!\n";
    chomp(my @lines = <$file>);
    return @lines;
}

# The command without the values that differ from call to call.
sub shape {
    my ($command) = @_;
    $command =~ s{(<data name="(?!Command|Macro|Window|Filename|Field)\w+">)[^<]*<}{$1<}g;
    return $command;
}

# Call and status of a reply, and the exact text of those that must be exact.
sub kind_of_reply { return $_[0] =~ /^(<GMAPI call="\w+"><status code="\d">)/ ? $1 : $_[0] }

my $sources = join ' ', map { read_lines($_) } split /\n/, `find src -name '*.cpp'`;
my (%sent, %received);
for (read_lines($ARGV[0] // die "usage: check-gmapi.pl <file>\n")) {
    # What a test sent by itself, under a name that the program does not know, is not meant.
    $sent{ shape($1) } = 1 if /^command\t(<GMAPI call="(\w+)".*)/ && index($sources, "L\"$2\"") >= 0;
    $received{ kind_of_reply($1) } = 1 if /^reply\t(.*)/;
}
die "$ARGV[0]: the tests sent next to nothing\n" unless keys %sent > 20;

my %shown;
my $wrong = 0;
for (read_lines($page)) {
    if (/^    > (<GMAPI .*)/) {
        $shown{ shape($1) } = 1;
        next if $sent{ shape($1) };
        print STDERR "$page: the program sends no such command: $1\n";
    } elsif (/^ +< (<GMAPI .*)/) {
        next if $received{ kind_of_reply($1) };
        print STDERR "$page: no test gives such a reply: $1\n";
    } else {
        next;
    }
    $wrong = 1;
}
for my $command (sort keys %sent) {
    # Arguments at the end may be left out: a run always gives them.
    (my $beginning = $command) =~ s{</GMAPI>$}{};
    next if grep { index($_, $beginning) == 0 } keys %shown;
    print STDERR "$page lacks the command $command\n";
    $wrong = 1;
}
exit $wrong;
