#!/usr/bin/env perl
# Fails when docs/troubleshooting.md lacks a text of the program, or holds one that the program does
# not have: check-messages.pl <file>, the file being what the unit tests wrote down (tests/fakes/Said.h).
#   - Every text that the program said in the tests stands in a table of its kind.
#   - Every row of a table was said in the tests; of the run-time errors, whose texts partly come up
#     on Windows only, each fixed piece stands in the sources.
#   - Every text in the sources stands in some table, whether a test makes the program say it or not.
use strict;
use warnings;

my $page = 'docs/troubleshooting.md';
my $wrong = 0;

sub complain {
    print STDERR "$_[0]\n";
    $wrong = 1;
}

sub read_file {
    my ($path) = @_;
    open my $file, '<', $path or die "$path: $!\n";
    local $/;
    my $text = <$file>;
    return $text;
}

# Blanks and line breaks are one blank.
sub plain {
    my ($text) = @_;
    $text =~ s/\s+/ /g;
    $text =~ s/^ | $//g;
    return $text;
}

# The sections of the page and the kinds of texts that stand there.
my %kinds = (
    'Message boxes' => 'box',
    'Status lines' => 'line',
    "Messages in GoldMine's status bar" => 'bar',
    'Run-time errors' => 'error',
);

# A part in braces is any text, but for these.
my %placeholders = (dashes => '-{68}', moment => '(?:start|connection|end)', step => '(?:Fetch|Close)');

my @rows;
my $kind = '';
for my $line (split /\n/, read_file($page)) {
    $kind = $kinds{$1} // '' if $line =~ /^## (.*)/;
    next unless $kind && $line =~ /^\| `([^`]+)` \|/;
    my $text = plain($1);
    my $pattern = join '', map { /^\{(\w+)\}$/ ? $placeholders{$1} // '.*' : quotemeta }
        split /(\{\w+\})/, $text;
    $pattern =~ s/\\ \.\*$/(?: .*)?/;    # which may be empty
    complain "$page: twice in \"$kind\": $text"
        if grep { $_->{kind} eq $kind && $_->{text} eq $text } @rows;
    (my $fixed = $text) =~ s/\{\w+\}//g;
    push @rows, { kind => $kind, text => $text, pattern => qr/^$pattern$/s, fixed => length $fixed };
}
die "$page: no tables\n" unless @rows > 100;

# What was said; the most exact row that fits is the one that is meant.
my @exact_first = sort { $b->{fixed} <=> $a->{fixed} } @rows;
my %unknown;
my $said = 0;
for my $line (split /\n/, read_file($ARGV[0] // die "usage: check-messages.pl <file>\n")) {
    my ($what, $text) = split /\t/, $line, 2;
    if ($what eq 'command' && $text =~ m{<GMAPI call="StatusMsg"><data name="Message">(.*?)</data>}) {
        ($what, $text) = ('bar', $1);
    }
    next unless $what =~ /^(?:box|line|bar)$/;
    ++$said;
    $text = plain($text);
    my ($row) = grep { $_->{kind} eq $what && $text =~ $_->{pattern} } @exact_first;
    if ($row) {
        $row->{said} = 1;
    } elsif ($text =~ /[A-Za-z]{2}\W+[A-Za-z]{2}/) {    # else a test's own "x" or "hello"
        $unknown{"$what: $text"}++;
    }
}
die "$ARGV[0]: the tests said next to nothing\n" unless $said > 100;
complain "$page lacks a $_" for sort keys %unknown;

# The texts in the sources: every literal of more than one word, or of one that describes an error.
my (@literals, %all_literals);
# The checking program says what to do in its own output.
for my $path (split /\n/, `find src -path src/check -prune -o -name '*.cpp' -print -o -name '*.h' -print`) {
    my $source = read_file($path);
    $source =~ s{^\s*//.*$}{}mg;
    # Of the controls' table, captions and tips stand on the window; what is refused is told.
    $source = join ";\n", $source =~ /\.(?:refusal|zeroWarning) =\s*((?:L"(?:[^"\\]|\\.)*"\s*)+)/g
        if $path =~ /ControlCatalogue\.h$/;
    while ($source =~ /((?:L"(?:[^"\\]|\\.)*"\s*)+)/g) {
        my $text = join '', $1 =~ /L"((?:[^"\\]|\\.)*)"/g;
        $text =~ s/\\r|\\n|\\t/ /g;
        $text =~ s/\\(.)/$1/g;
        $text = plain($text);
        $all_literals{$text} = 1;
        push @literals, [$path, $text]
            if $text =~ /[A-Za-z]{2}.* .*\S/ || ($path =~ m{util/RuntimeError\.cpp$} && $text ne '');
    }
}
die "the sources hold next to no texts\n" unless @literals > 150;

# Literals of more than one word that are no texts of these kinds.
my @others = (
    qr/^"?></, qr/^</, qr/GMAPI\b/, qr/^(?:select|where|and|RecType|' or fax) ?/,    # GoldMine's and HTML's
    qr/^(?:SOFTWARE|HKLM)\\/, qr/^Halvorn (?:Systems|Corvane to 3CX)$/,    # places and names
    qr/^(?:-cmd makecall:|&Dial,)/,                                        # command lines
    qr/^The command was executed\.$/,                                      # GoldMine's own
    qr/^(?:incoming call from|outgoing call to)$/,                         # the Reference
    qr/^Write Status messages to log file$/,                               # a tip
    # Captions of the Paths and Registry pages.
    qr/^(?:CorvaneTo3CX calls|3CX uses|3CX calls) this (?:program|plugin) to /,
    qr/^(?:3CX Command Line API Plugin log level:|Path to .*:|Set to log(?: only)?)$/,
    qr/^\(the plugin belongs to 3CX 14 and later\)$/,
    qr/^3CX(?:Phone| MyPhone) defined in registry\./, qr/^Unknown - probably not running/,
);
my @used;
my $all_rows = join "\n", map { $_->{text} } @rows;
for my $literal (@literals) {
    my ($path, $text) = @$literal;
    next if $path =~ m{app/AboutText\.cpp$};
    my ($other) = grep { $text =~ $others[$_] } 0 .. $#others;
    if (defined $other) {
        $used[$other] = 1;
    } elsif (index($all_rows, $text) < 0 && !grep { $text =~ $_->{pattern} } @rows) {
        complain "$page lacks a text of $path: $text";
    }
}
$used[$_] or complain "$0: an exception that nothing needs: $others[$_]" for 0 .. $#others;

# An error's text is put together from literals, with what differs between them.
my $literal = join '|', map { quotemeta } sort { length $b <=> length $a } grep { /\w/ } keys %all_literals;
for my $row (@rows) {
    if ($row->{kind} eq 'error') {
        for my $piece (split /\{\w+\}/, $row->{text}) {
            complain "$page: no text of the program in \"$row->{text}\": $piece"
                unless $piece =~ /^(?:$literal|\W)*$/;
        }
    } elsif (!$row->{said}) {
        complain "$page: no $row->{kind} of the program in the tests: $row->{text}";
    }
}
exit $wrong;
